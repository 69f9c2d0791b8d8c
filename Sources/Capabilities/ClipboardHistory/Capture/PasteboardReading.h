// The pasteboard as the classification of a copy sees it: read-only.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <optional>

namespace orvane {

class PasteboardReading {
public:
    virtual ~PasteboardReading() = default;

    /// Returns the identifiers of the types that are present.
    [[nodiscard]] virtual QStringList types() const = 0;
    [[nodiscard]] virtual std::optional<QString> urlString() const = 0;
    [[nodiscard]] virtual std::optional<QString> plainString() const = 0;
    /// Returns a picture as PNG, converted where the pasteboard has only another format.
    [[nodiscard]] virtual std::optional<QByteArray> pngData() const = 0;
    [[nodiscard]] virtual std::optional<QList<QUrl>> fileURLs() const = 0;
};

} // namespace orvane
