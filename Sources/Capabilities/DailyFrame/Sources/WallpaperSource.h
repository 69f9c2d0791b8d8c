// A service that offers pictures: the address to ask, and how its response reads. Pure logic; any thread.
#pragma once

#include "Capabilities/DailyFrame/Sources/WallpaperItem.h"
#include "OrvaneCore/Base/EnumNames.h"
#include "Platform/Http.h"

#include <QList>

#include <memory>
#include <stdexcept>

namespace orvane {

enum class SourceKind { bing, unsplash };

inline constexpr std::array sourceKindNames{
    EnumName{SourceKind::bing, "bing", TextSource("DailyFrameText", "Bing Image of the Day")},
    EnumName{SourceKind::unsplash, "unsplash", TextSource("DailyFrameText", "Unsplash (Daylight)")},
};
constexpr const auto& enumNames(SourceKind)
{
    return sourceKindNames;
}
static_assert(isInOrder<SourceKind>());

/// Its text is what a person reads.
class WallpaperSourceError : public std::runtime_error {
public:
    enum class Kind { badResponse, emptyList };

    explicit WallpaperSourceError(Kind kind);

    [[nodiscard]] Kind kind() const { return m_kind; }

private:
    Kind m_kind;
};

class WallpaperSource {
public:
    /// The longest response that is read.
    static constexpr qint64 mostBytes = 8'000'000;

    virtual ~WallpaperSource() = default;

    /// A short name.
    [[nodiscard]] virtual QString name() const = 0;
    /// Returns the address to ask for pictures of a size in pixels. Throws WallpaperSourceError.
    [[nodiscard]] virtual QUrl request(int width, int height) const = 0;
    /// Returns the pictures, newest or best first, at least one. Throws WallpaperSourceError, and JsonError
    /// for a response that isn't what it should be.
    [[nodiscard]] QList<WallpaperItem> items(const Http::Response& response) const;

protected:
    /// Reads the body of a successful response.
    [[nodiscard]] virtual QList<WallpaperItem> decode(const QByteArray& body) const = 0;
};

} // namespace orvane
