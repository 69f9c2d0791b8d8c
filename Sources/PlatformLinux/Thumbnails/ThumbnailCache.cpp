#include "PlatformLinux/Thumbnails/ThumbnailCache.h"

#include <QCryptographicHash>
#include <QFile>

#include <array>

namespace orvane::ThumbnailCache {

namespace {

struct Size {
    int side;
    const char* name;
};

constexpr std::array sizes{Size{128, "normal"}, Size{256, "large"}, Size{512, "x-large"},
                           Size{1024, "xx-large"}};

} // namespace

QByteArray uriOf(const QString& path)
{
    // The characters that the desktop's programs leave as they are: another choice is another entry.
    return "file://" + QFile::encodeName(path).toPercentEncoding("!$&'()*+,/:=@");
}

QStringList entries(const QString& folder, const QString& path, int leastSide)
{
    const QByteArray name = QCryptographicHash::hash(uriOf(path), QCryptographicHash::Md5).toHex() + ".png";
    QStringList found;
    for (const Size& size : sizes) {
        if (size.side >= leastSide)
            found.append(folder + QStringLiteral("/thumbnails/") + QLatin1String(size.name) + u'/' +
                         QLatin1String(name));
    }
    return found;
}

QString flavour(int leastSide)
{
    for (const Size& size : sizes) {
        if (size.side >= leastSide)
            return QLatin1String(size.name);
    }
    return QLatin1String(sizes.back().name);
}

} // namespace orvane::ThumbnailCache
