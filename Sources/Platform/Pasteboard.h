// A pasteboard of the desktop: what any program copied last. Main thread.
//
// Nothing here waits for another program. What another program holds is asked for and comes later; what this
// one writes is there for others at once, for as long as the process runs.
#pragma once

#include <QByteArray>
#include <QLatin1StringView>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <functional>
#include <memory>
#include <optional>

namespace orvane {

/// Identifiers of types. Others, such as the marks of private content, keep the names that they come with.
namespace pasteboardType {
inline constexpr QLatin1StringView string{"public.utf8-plain-text"};
inline constexpr QLatin1StringView url{"public.url"};
inline constexpr QLatin1StringView fileURL{"public.file-url"};
inline constexpr QLatin1StringView png{"public.png"};
inline constexpr QLatin1StringView tiff{"public.tiff"};
inline constexpr QLatin1StringView rtf{"public.rtf"};
inline constexpr QLatin1StringView html{"public.html"};
} // namespace pasteboardType

/// The content of a pasteboard at one change count.
struct PasteboardContents {
    int changeCount = 0;
    /// All types that are present, read or not.
    QStringList types = {};
    /// The data of those asked-for types that could be read. Texts, HTML and URLs are in UTF-8;
    /// several URLs, such as those of remote files, stand one on a line.
    QMap<QString, QByteArray> data = {};
    /// All files, in order, when `pasteboardType::fileURL` was asked for.
    QList<QUrl> fileURLs = {};

    [[nodiscard]] std::optional<QString> stringForType(const QString& type) const;
    [[nodiscard]] std::optional<QByteArray> dataForType(const QString& type) const;
};

/// The bytes of a PNG file.
struct PasteboardImage {
    QByteArray png;
};

/// A read under way. Its end cancels it: after the destructor the completion isn't called any more.
class PasteboardRead {
public:
    virtual ~PasteboardRead() = default;
};

/// Copies are announced as long as it exists: after the destructor the handler isn't called any more.
class PasteboardWatch {
public:
    virtual ~PasteboardWatch() = default;
};

class Pasteboard {
public:
    /// Nothing when the owner didn't answer in time or sent too much.
    using Completion = std::function<void(std::optional<PasteboardContents> contents)>;

    virtual ~Pasteboard() = default;

    /// Tells a person why copies of some programs are missed in this session; empty where all are seen.
    [[nodiscard]] virtual QString limitation() const = 0;

    /// A number that changes with each copy of any program. To ask costs the reading of an integer. A program
    /// that ends, and whose content goes with it, doesn't change it.
    [[nodiscard]] virtual int changeCount() const = 0;

    /// Calls `handler` in a later turn of the run loop after a copy of any program, this one included, has
    /// changed the count; several copies may be announced together. The handler may end its own watch. Null
    /// where the platform doesn't announce copies: there the count has to be looked at again and again.
    [[nodiscard]] virtual std::unique_ptr<PasteboardWatch> watch(std::function<void()> handler) = 0;

    /// Asks for the types that are present and the data of those in `types`. Completes once, in a later turn
    /// of the run loop, with what is newest then; the completion may end its own read. Content that this
    /// program has cleared and written before the call is what others get from then on. Reads complete in
    /// their order, but for one whose picture has to be converted: later ones don't wait for it.
    [[nodiscard]] virtual std::unique_ptr<PasteboardRead> read(const QStringList& types,
                                                               Completion completion) = 0;

    /// Takes the pasteboard and leaves it empty. Returns the new change count, which stays until another
    /// copy: what is added below doesn't count.
    virtual int clearContents() = 0;

    /// The following add to what clearContents() began, within the same turn of the run loop. They return
    /// false when another program has copied since.
    virtual bool setString(const QString& string, const QString& type) = 0;
    virtual bool setData(const QByteArray& data, const QString& type) = 0;
    /// Takes files only; also false when there is none among the URLs.
    virtual bool writeObjects(const QList<QUrl>& fileURLs) = 0;
    /// Also false when the bytes aren't a PNG.
    virtual bool writeObjects(const PasteboardImage& image) = 0;
};

} // namespace orvane
