#include "PlatformLinux/Files/DesktopEntry.h"

namespace orvane {

namespace {

const QLatin1String wordsNeedQuotesFor(" \t\n\"'\\><~|&;$*?#()`");
const QLatin1String escapedInQuotes("\"`$\\");

/// Other space, such as one that doesn't break a line, may be a part of a file's name.
bool separatesWords(QChar c)
{
    return c == u' ' || c == u'\t' || c == u'\n';
}

QString unescaped(const QString& raw)
{
    QString text;
    for (qsizetype at = 0; at < raw.size(); ++at) {
        if (raw[at] != u'\\' || at + 1 == raw.size()) {
            text += raw[at];
            continue;
        }
        const QChar escape = raw[++at];
        switch (escape.unicode()) {
        case u's':
            text += u' ';
            break;
        case u'n':
            text += u'\n';
            break;
        case u't':
            text += u'\t';
            break;
        case u'r':
            text += u'\r';
            break;
        case u'\\':
            text += u'\\';
            break;
        default:
            text += QString(u'\\') + escape; // "\;" of a list, among others
        }
    }
    return text;
}

bool isOfAnotherLocale(QByteArrayView key, const QStringList& locales)
{
    const qsizetype bracket = key.indexOf('[');
    return bracket > 0 &&
           !(key.endsWith(']') && locales.contains(QLatin1StringView(key.sliced(bracket + 1).chopped(1))));
}

} // namespace

DesktopEntry DesktopEntry::parse(QByteArrayView text, const std::optional<QStringList>& locales)
{
    DesktopEntry entry;
    bool inMainGroup = false;
    const QByteArrayView byteOrderMark("\xEF\xBB\xBF");
    for (qsizetype begin = text.startsWith(byteOrderMark) ? byteOrderMark.size() : 0; begin < text.size();) {
        const qsizetype newline = text.indexOf('\n', begin);
        const qsizetype end = newline < 0 ? text.size() : newline;
        const QByteArrayView line = text.sliced(begin, end - begin).trimmed();
        begin = end + 1;
        if (line.startsWith('[')) {
            inMainGroup = line == "[Desktop Entry]";
            continue;
        }
        const qsizetype equals = line.indexOf('=');
        if (!inMainGroup || equals <= 0 || line.startsWith('#'))
            continue;
        if (locales && isOfAnotherLocale(line.first(equals).trimmed(), *locales))
            continue;
        const QString decoded = QString::fromUtf8(line);
        const qsizetype keyEnd = decoded.indexOf(u'=');
        entry.m_values.insert(decoded.first(keyEnd).trimmed(), decoded.sliced(keyEnd + 1).trimmed());
    }
    return entry;
}

std::optional<QString> DesktopEntry::string(const QString& key) const
{
    const auto found = m_values.find(key);
    if (found == m_values.end())
        return std::nullopt;
    return unescaped(*found);
}

std::optional<bool> DesktopEntry::boolean(const QString& key) const
{
    const QString value = m_values.value(key);
    if (value == QLatin1String("true") || value == QLatin1String("1"))
        return true;
    if (value == QLatin1String("false") || value == QLatin1String("0"))
        return false;
    return std::nullopt;
}

QStringList DesktopEntry::list(const QString& key) const
{
    return m_values.value(key).split(u';', Qt::SkipEmptyParts);
}

QString DesktopEntry::programOf(const QString& commandLine)
{
    qsizetype begin = 0;
    while (begin < commandLine.size() && separatesWords(commandLine[begin]))
        ++begin;
    const QStringView line = QStringView(commandLine).sliced(begin);
    const bool isQuoted = line.startsWith(u'"');
    QString word;
    for (qsizetype at = isQuoted ? 1 : 0; at < line.size(); ++at) {
        const QChar c = line[at];
        if (isQuoted && c == u'"')
            return word;
        if (!isQuoted && separatesWords(c))
            return word;
        const bool hasNext = at + 1 < line.size();
        const bool isEscape = isQuoted && c == u'\\';
        const bool isEscapedPercent = c == u'%' && hasNext && line[at + 1] == u'%';
        if ((isEscape && hasNext) || isEscapedPercent)
            ++at;
        word += line[at];
    }
    return isQuoted ? QString() : word; // the quote doesn't end
}

QString DesktopEntry::quotedWord(const QString& word)
{
    bool needsQuotes = word.isEmpty();
    QString inner;
    for (const QChar c : word) {
        needsQuotes = needsQuotes || wordsNeedQuotesFor.contains(c);
        if (escapedInQuotes.contains(c))
            inner += u'\\';
        if (c == u'%') // a lone one begins a field code
            inner += u'%';
        inner += c;
    }
    return needsQuotes ? QString(u'"' + inner + u'"') : inner;
}

QString DesktopEntry::escaped(const QString& text)
{
    QString raw;
    for (qsizetype at = 0; at < text.size(); ++at) {
        switch (text[at].unicode()) {
        case u'\\':
            raw += QLatin1String("\\\\");
            break;
        case u'\n':
            raw += QLatin1String("\\n");
            break;
        case u'\r':
            raw += QLatin1String("\\r");
            break;
        case u'\t':
            raw += QLatin1String("\\t");
            break;
        case u' ':
            raw += at == 0 ? QLatin1String("\\s") : QLatin1String(" ");
            break;
        default:
            raw += text[at];
        }
    }
    return raw;
}

} // namespace orvane
