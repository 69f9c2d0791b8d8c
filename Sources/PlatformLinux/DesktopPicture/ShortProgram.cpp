#include "PlatformLinux/DesktopPicture/ShortProgram.h"

#include <QProcess>

namespace orvane {

namespace {

constexpr int longestRun = 5000; // milliseconds

} // namespace

std::optional<QString> runShortly(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments, QIODevice::ReadOnly);
    if (!process.waitForFinished(longestRun)) {
        process.kill();
        process.waitForFinished();
        return std::nullopt;
    }
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        return std::nullopt;
    return QString::fromUtf8(process.readAllStandardOutput());
}

} // namespace orvane
