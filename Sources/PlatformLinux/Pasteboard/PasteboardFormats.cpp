#include "PlatformLinux/Pasteboard/PasteboardFormats.h"

#include <QStringDecoder>
#include <QStringEncoder>

#include <algorithm>

namespace orvane {

namespace {

/// "file://localhost/x" and "file:///x" are the same file. Without a host, a path can't begin with two
/// slashes.
QUrl normalized(QUrl url)
{
    if (url.isLocalFile() && url.host() == QLatin1StringView("localhost")) {
        QString path = url.path(QUrl::FullyEncoded);
        while (path.startsWith(QLatin1StringView("//")))
            path.remove(0, 1);
        url.setPath(path, QUrl::TolerantMode);
        url.setHost(QString());
    }
    return url;
}

void appendUrl(QList<QUrl>& urls, const QByteArray& line)
{
    const QUrl url = QUrl::fromEncoded(line, QUrl::TolerantMode);
    if (url.isValid() && !url.scheme().isEmpty())
        urls.append(normalized(url));
}

QByteArray withoutEndingZeros(const QByteArray& bytes)
{
    qsizetype size = bytes.size();
    while (size > 0 && bytes[size - 1] == '\0')
        --size;
    return bytes.first(size);
}

/// Markup and links begin with ASCII characters, whose other byte is zero.
bool looksLikeUtf16(const QByteArray& bytes)
{
    return bytes.size() >= 2 && bytes.size() % 2 == 0 && bytes[0] != '\0' && bytes[1] == '\0' &&
           (bytes.size() == 2 || bytes[3] == '\0');
}

QString decodeUtf16(const QByteArray& bytes, QStringConverter::Encoding encoding)
{
    QString text = QStringDecoder(encoding)(bytes);
    while (text.endsWith(QChar::Null))
        text.chop(1);
    return text;
}

} // namespace

QList<QUrl> decodeUriList(const QByteArray& bytes)
{
    QList<QUrl> urls;
    for (const QByteArray& line : withoutEndingZeros(bytes).split('\n')) {
        const QByteArray trimmed = line.trimmed();
        if (!trimmed.isEmpty() && !trimmed.startsWith('#'))
            appendUrl(urls, trimmed);
    }
    return urls;
}

QByteArray encodeUriList(const QList<QUrl>& urls)
{
    QByteArray bytes;
    for (const QUrl& url : urls)
        bytes += url.toEncoded() + QByteArrayLiteral("\r\n");
    return bytes;
}

QList<QUrl> decodeCopiedFiles(const QByteArray& bytes)
{
    const qsizetype firstEnd = bytes.indexOf('\n');
    const QByteArray verb = bytes.first(std::max<qsizetype>(firstEnd, 0)).trimmed();
    const bool hasVerb = verb == "copy" || verb == "cut";
    return decodeUriList(hasVerb ? bytes.sliced(firstEnd + 1) : bytes);
}

QByteArray encodeCopiedFiles(const QList<QUrl>& urls)
{
    QByteArray bytes = QByteArrayLiteral("copy");
    for (const QUrl& url : urls)
        bytes += '\n' + url.toEncoded();
    return bytes;
}

std::optional<QString> decodeMozUrl(const QByteArray& bytes)
{
    const QString text = decodeText(bytes);
    const QString url = text.first(std::max<qsizetype>(text.indexOf(u'\n'), 0)).trimmed();
    if (!url.isEmpty())
        return url;
    return text.contains(u'\n') || text.trimmed().isEmpty() ? std::nullopt : std::optional(text.trimmed());
}

QByteArray encodeMozUrl(const QString& url)
{
    return QStringEncoder(QStringConverter::Utf16LE)(url + u'\n' + url);
}

QString decodeText(const QByteArray& bytes)
{
    if (bytes.startsWith("\xFF\xFE"))
        return decodeUtf16(bytes.sliced(2), QStringConverter::Utf16LE);
    if (bytes.startsWith("\xFE\xFF"))
        return decodeUtf16(bytes.sliced(2), QStringConverter::Utf16BE);
    if (looksLikeUtf16(bytes))
        return decodeUtf16(bytes, QStringConverter::Utf16LE);
    QByteArray text = withoutEndingZeros(bytes);
    if (text.startsWith("\xEF\xBB\xBF"))
        text.remove(0, 3);
    QStringDecoder decoder(QStringConverter::Utf8);
    const QString decoded = decoder(text);
    return decoder.hasError() ? QString::fromLatin1(text) : decoded;
}

QString decodeLatin1(const QByteArray& bytes)
{
    return QString::fromLatin1(withoutEndingZeros(bytes));
}

bool isPng(const QByteArray& bytes)
{
    return bytes.startsWith("\x89PNG\r\n\x1A\n");
}

} // namespace orvane
