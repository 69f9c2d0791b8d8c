#include "PlatformLinux/Appearance/AccentColor.h"

#include "PlatformLinux/Common/XdgDirectories.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

namespace orvane {

namespace {

constexpr qint64 longestSheet = 1024 * 1024;
/// Themes have one or two.
constexpr int mostImports = 8;
constexpr int mostReferences = 8;

std::optional<QColor> colorFrom(const QString& text)
{
    static const QRegularExpression numbers(
        QStringLiteral("^(?:rgb\\()?\\s*(\\d{1,3})\\s*,\\s*(\\d{1,3})\\s*,\\s*(\\d{1,3})\\s*\\)?$"));
    if (const auto found = numbers.match(text); found.hasMatch()) {
        const QColor color(found.captured(1).toInt(), found.captured(2).toInt(), found.captured(3).toInt());
        return color.isValid() ? std::optional(color) : std::nullopt;
    }
    const QColor color = text.startsWith(u'#') ? QColor(text) : QColor();
    return color.isValid() ? std::optional(color) : std::nullopt;
}

/// Returns what a style sheet defines a colour's name to be; the last definition counts.
QString definition(const QString& sheet, const QString& name)
{
    const QRegularExpression line(QStringLiteral("@define-color\\s+%1\\s+([^;]+);").arg(name));
    QString value;
    for (auto found = line.globalMatch(sheet); found.hasNext();)
        value = found.next().captured(1).trimmed();
    return value;
}

/// Returns nothing for what is no regular file or too long.
QString readSheet(const QString& path)
{
    const QFileInfo info(path);
    QFile file(path);
    if (!info.isFile() || info.size() > longestSheet || !file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.read(longestSheet));
}

} // namespace

std::optional<QColor> accentOfPortal(double red, double green, double blue)
{
    const auto isPart = [](double value) { return value >= 0 && value <= 1; };
    if (!isPart(red) || !isPart(green) || !isPart(blue))
        return std::nullopt;
    return QColor::fromRgbF(static_cast<float>(red), static_cast<float>(green), static_cast<float>(blue));
}

std::optional<QColor> accentOfKde(const QVariant& value)
{
    return value.typeId() == QMetaType::QString ? colorFrom(value.toString().trimmed()) : std::nullopt;
}

std::optional<QColor> selectedColorIn(const QString& styleSheet)
{
    QString value = definition(styleSheet, QStringLiteral("theme_selected_bg_color"));
    static const QRegularExpression name(QStringLiteral("^@(\\w+)$"));
    for (int i = 0; i < mostReferences; ++i) {
        const auto reference = name.match(value);
        if (!reference.hasMatch())
            break;
        value = definition(styleSheet, reference.captured(1));
    }
    return colorFrom(value);
}

QStringList themeFolders()
{
    QStringList folders;
    if (const auto data = XdgDirectories::ofThisProcess().data)
        folders.append(*data + QStringLiteral("/themes"));
    folders.append(QDir::homePath() + QStringLiteral("/.themes"));
    const QString system =
        qEnvironmentVariable("XDG_DATA_DIRS", QStringLiteral("/usr/local/share:/usr/share"));
    for (const QString& folder : system.split(u':', Qt::SkipEmptyParts))
        folders.append(folder + QStringLiteral("/themes"));
    return folders;
}

std::optional<QColor> readSelectedColor(const QString& theme, const QStringList& folders)
{
    if (theme.isEmpty() || theme.startsWith(u'.') || theme.contains(u'/'))
        return std::nullopt;
    static const QRegularExpression import(
        QStringLiteral("@import\\s+url\\(\\s*[\"']?([\\w.-]+)[\"']?\\s*\\)"));
    for (const QString& folder : folders) {
        const QDir sheets(folder + u'/' + theme + QStringLiteral("/gtk-3.0"));
        QStringList names{QStringLiteral("gtk.css")};
        QString text;
        for (int i = 0; i < names.size() && i <= mostImports; ++i) {
            const QString sheet = readSheet(sheets.filePath(names.at(i)));
            for (auto found = import.globalMatch(sheet); found.hasNext();)
                names.append(found.next().captured(1));
            text.prepend(sheet + u'\n'); // what a sheet says itself counts more than what it imports
        }
        if (const auto color = selectedColorIn(text))
            return color;
    }
    return std::nullopt;
}

} // namespace orvane
