#include "Desktop/StartBudget/StartFigures.h"

#include "Desktop/Support/Program.h"
#include "Desktop/Support/Tray.h"
#include "Support/Eventually.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <stdexcept>

namespace orvane::tests {

namespace {

QByteArray content(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString ofProcess(qint64 pid, const char* name)
{
    return QStringLiteral("/proc/%1/%2").arg(pid).arg(QLatin1String(name));
}

Program::Start startOf(const QString& executable, const QStringList& arguments = {})
{
    return {.firstRun = Program::FirstRun::done, .arguments = arguments, .executable = executable};
}

QStringList threads(qint64 pid)
{
    return QDir(ofProcess(pid, "task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
}

/// How often the threads had the processor: it stays the same while the program does nothing.
QByteArray activity(qint64 pid)
{
    QByteArray all;
    for (const QString& thread : threads(pid)) {
        const QByteArray status = content(ofProcess(pid, "task/") + thread + QStringLiteral("/status"));
        all += status.mid(status.indexOf("voluntary_ctxt_switches"));
    }
    return all;
}

void waitUntilStarted(qint64 pid)
{
    const auto isShown = [pid] { return !Tray().itemsOf(pid).isEmpty(); };
    QByteArray before;
    int looksWithoutChange = 0;
    const auto isQuiet = [&] {
        const QByteArray now = activity(pid);
        looksWithoutChange = now == before ? looksWithoutChange + 1 : 0;
        before = now;
        return looksWithoutChange >= 25;
    };
    if (!eventually(30s, isShown) || !eventually(30s, isQuiet))
        throw std::runtime_error("The program didn't come to rest with a status item");
}

void addMemory(StartFigures& figures, qint64 pid, const QString& executable)
{
    static const QRegularExpression mapping(
        QStringLiteral("^[0-9a-f]+-[0-9a-f]+ \\S+ \\S+ \\S+ \\d+ *(.*)$"));
    const QString own = QFileInfo(executable).canonicalFilePath();
    QString file;
    for (const QByteArray& line : content(ofProcess(pid, "smaps")).split('\n')) {
        const auto match = mapping.match(QString::fromUtf8(line));
        if (match.hasMatch()) {
            file = match.captured(1);
            if (file.startsWith(u'/') && !figures.filesMapped.contains(file))
                figures.filesMapped.append(file);
            continue;
        }
        const long kilobytes = line.simplified().split(' ').value(1).toLong();
        if (line.startsWith("Anonymous:"))
            figures.written += kilobytes;
        else if (line.startsWith("Rss:") && file == own)
            figures.ownFile += kilobytes;
    }
}

/// Adds up what the dynamic linker says of the time before main().
long relocations(const QByteArray& statistics)
{
    static const QRegularExpression number(
        QStringLiteral("number of (?:relative )?relocations(?: from cache)?: (\\d+)"));
    const QString text =
        QString::fromUtf8(statistics).section(QStringLiteral("runtime linker statistics"), 1, 1);
    long sum = 0;
    for (auto matches = number.globalMatch(text); matches.hasNext();)
        sum += matches.next().captured(1).toLong();
    return sum;
}

QStringList openedFiles(const QByteArray& trace)
{
    static const QRegularExpression opened(QStringLiteral("\"([^\"]+)\".*= \\d+$"));
    QStringList files;
    for (const QByteArray& line : trace.split('\n')) {
        if (const auto match = opened.match(QString::fromUtf8(line)); match.hasMatch())
            files.append(match.captured(1));
    }
    return files;
}

} // namespace

StartFigures startFigures(const QString& executable)
{
    const QTemporaryDir folder;
    StartFigures figures;
    {
        Program::Start start = startOf(executable);
        start.environment = {{QStringLiteral("LD_DEBUG"), QStringLiteral("statistics")},
                             {QStringLiteral("LD_DEBUG_OUTPUT"), folder.filePath(QStringLiteral("linker"))}};
        const Program program(start);
        waitUntilStarted(program.pid());
        figures.threads = static_cast<int>(threads(program.pid()).size());
        addMemory(figures, program.pid(), executable);
        figures.relocations =
            relocations(content(folder.filePath(QStringLiteral("linker.%1").arg(program.pid()))));
    }
    const QString trace = folder.filePath(QStringLiteral("trace"));
    // With -D the program is the child, and strace its descendant.
    const Program traced(
        startOf(QStringLiteral("strace"),
                {QStringLiteral("-D"), QStringLiteral("-qq"), QStringLiteral("-e"),
                 QStringLiteral("trace=open,openat"), QStringLiteral("-o"), trace, executable}));
    waitUntilStarted(traced.pid());
    figures.filesOpened = openedFiles(content(trace));
    return figures;
}

} // namespace orvane::tests
