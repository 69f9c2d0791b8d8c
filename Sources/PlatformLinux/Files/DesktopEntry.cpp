#include "PlatformLinux/Files/DesktopEntry.h"

namespace orvane {

namespace {

const QLatin1String wordsNeedQuotesFor(" \t\n\"'\\><~|&;$*?#()`");
const QLatin1String escapedInQuotes("\"`$\\");

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

} // namespace

DesktopEntry DesktopEntry::parse(const QByteArray& text)
{
    DesktopEntry entry;
    bool inMainGroup = false;
    for (const QString& line : QString::fromUtf8(text).split(u'\n')) {
        const QString trimmed = line.trimmed();
        if (trimmed.startsWith(u'['))
            inMainGroup = trimmed == QLatin1String("[Desktop Entry]");
        const qsizetype equals = trimmed.indexOf(u'=');
        if (!inMainGroup || equals <= 0 || trimmed.startsWith(u'#') || trimmed.startsWith(u'['))
            continue;
        entry.m_values.insert(trimmed.first(equals).trimmed(), trimmed.sliced(equals + 1).trimmed());
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
    const QString line = commandLine.trimmed();
    const bool isQuoted = line.startsWith(u'"');
    QString word;
    for (qsizetype at = isQuoted ? 1 : 0; at < line.size(); ++at) {
        const QChar c = line[at];
        if (isQuoted && c == u'"')
            return word;
        if (!isQuoted && c.isSpace())
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
