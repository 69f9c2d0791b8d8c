#include "PlatformLinux/Common/HelperProgram.h"

#include <QCoreApplication>
#include <QFile>

namespace orvane {

QByteArray helperProgram(const char* name)
{
    const QString directory = QCoreApplication::applicationDirPath();
    for (const char* place : {"/", "/../libexec/orvane/"}) {
        const QString path = directory + QLatin1String(place) + QLatin1String(name);
        if (QFile::exists(path))
            return QFile::encodeName(path);
    }
    return {};
}

} // namespace orvane
