// Measures Orvane as a process beside a bare Qt Widgets program with a tray icon, in one run:
//   ProcessCost startup [rounds]   time from exec to the icon in the status area, and memory after it
//   ProcessCost idle [seconds]     how often the process is woken while nothing happens
// Needs a desktop with a StatusNotifierItem panel: Tools/desktop/session -- build/release/bin/ProcessCost
// startup
#include "ProcessFigures.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <map>
#include <vector>

namespace {

const QString orvane = QStringLiteral(ORVANE_PROGRAM);
const QString bare = QStringLiteral(BARE_PROGRAM);

/// Emits `registered` when a status item of the given process has been taken in.
class Watcher : public QObject {
    Q_OBJECT

public:
    Watcher()
    {
        QDBusConnection::sessionBus().connect(
            QStringLiteral("org.kde.StatusNotifierWatcher"), QStringLiteral("/StatusNotifierWatcher"),
            QStringLiteral("org.kde.StatusNotifierWatcher"), QStringLiteral("StatusNotifierItemRegistered"),
            this, SIGNAL(registered(QString)));
    }

Q_SIGNALS:
    void registered(const QString&);
};

class Process {
public:
    Process(const QString& program, Watcher& watcher)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_home.path());
        QDir(m_home.path()).mkpath(QStringLiteral("orvane"));
        QFile defaults(m_home.filePath(QStringLiteral("orvane/defaults.json")));
        if (defaults.open(QIODevice::WriteOnly))
            defaults.write("{\"hasOnboarded\": true}\n");
        defaults.close();
        m_process.setProcessEnvironment(environment);
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);

        QEventLoop loop;
        QElapsedTimer clock;
        QObject::connect(&watcher, &Watcher::registered, &loop, [&] {
            m_startup = static_cast<double>(clock.nsecsElapsed()) / 1e6;
            loop.quit();
        });
        QTimer::singleShot(20'000, &loop, [&loop] { loop.exit(1); });
        clock.start();
        m_process.start(program, {});
        if (loop.exec() != 0)
            qFatal("%s showed no status item", qPrintable(program));
    }

    ~Process()
    {
        m_process.terminate();
        if (!m_process.waitForFinished(5000))
            m_process.kill();
        m_process.waitForFinished();
    }

    [[nodiscard]] double startupMs() const { return m_startup; }

    [[nodiscard]] double kilobytes(const char* field) const
    {
        return processFigures::kilobytes(m_process.processId(), field);
    }
    [[nodiscard]] std::map<QByteArray, long> switches() const
    {
        return processFigures::switches(m_process.processId());
    }

private:
    QTemporaryDir m_home;
    QProcess m_process;
    double m_startup = 0;
};

void turnFor(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

void report(const char* what, const std::vector<double>& ours, const std::vector<double>& theirs,
            const char* unit)
{
    std::printf("%-16s Orvane %8.1f %s   bare %8.1f %s   ratio %.2f\n", what, median(ours), unit,
                median(theirs), unit, median(ours) / median(theirs));
}

int startup(Watcher& watcher, int rounds)
{
    std::map<QString, std::vector<double>> times, proportional, dirty;
    for (int round = 0; round < rounds + 1; ++round) {
        for (const QString& program : {orvane, bare}) {
            const Process process(program, watcher);
            turnFor(1500); // memory that is used after the icon shows counts too
            if (round == 0)
                continue; // the first round warms the page cache
            times[program].push_back(process.startupMs());
            proportional[program].push_back(process.kilobytes("Pss") / 1024);
            dirty[program].push_back((process.kilobytes("Private_Dirty")) / 1024);
        }
    }
    report("start to icon", times[orvane], times[bare], "ms");
    report("memory (PSS)", proportional[orvane], proportional[bare], "MB");
    report("private dirty", dirty[orvane], dirty[bare], "MB");
    return 0;
}

int idle(Watcher& watcher, int seconds)
{
    const Process process(orvane, watcher);
    turnFor(5000);
    const auto before = process.switches();
    turnFor(seconds * 1000);
    long total = 0;
    for (const auto& [thread, count] : process.switches()) {
        const auto earlier = before.find(thread);
        const long woken = count - (earlier != before.end() ? earlier->second : 0);
        std::printf("%-28s woken %ld times\n", thread.constData(), woken);
        total += woken;
    }
    std::printf("woken %ld times in %d s\n", total, seconds);
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    Watcher watcher;
    const QString mode = arguments.value(1);
    if (mode == QStringLiteral("startup"))
        return startup(watcher, arguments.value(2, QStringLiteral("11")).toInt());
    if (mode == QStringLiteral("idle"))
        return idle(watcher, arguments.value(2, QStringLiteral("30")).toInt());
    std::fprintf(stderr, "usage: ProcessCost startup [rounds] | idle [seconds]\n");
    return 2;
}

#include "ProcessCost.moc"
