// Measures the clipboard history beside CopyQ, by turns in one run:
//   ClipboardBeside [rounds]   from start to the icon in the panel; memory of all its processes with the same
//                              1,000 texts; from a copy to its data being read, and to the entry
// Needs a desktop with a panel, and CopyQ, which is installed for this alone:
//   apt-get install copyq; Tools/desktop/session -- build/release/bin/ClipboardBeside
#include "ClipboardProcess.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QStandardPaths>

#include <cstdio>
#include <functional>
#include <memory>
#include <tuple>

namespace {

using namespace clipboardProcess;

constexpr int texts = 1000;

/// Emits `registered` when the panel has taken in a status item.
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

/// A text on the clipboard that notes when another program reads it.
class Copy : public QMimeData {
public:
    Copy(QString text, std::function<void()> read) : m_text(std::move(text)), m_read(std::move(read)) {}

    [[nodiscard]] QStringList formats() const override { return {QStringLiteral("text/plain")}; }

protected:
    [[nodiscard]] QVariant retrieveData(const QString&, QMetaType) const override
    {
        m_read();
        return m_text;
    }

private:
    QString m_text;
    std::function<void()> m_read;
};

/// Sums the memory of a process and all that it has started.
double familyMemory(qint64 pid, const char* field)
{
    QFile map(QStringLiteral("/proc/%1/smaps_rollup").arg(pid));
    if (!map.open(QIODevice::ReadOnly) || map.readAll().isEmpty())
        return 0; // a process that has just ended
    double sum = processFigures::kilobytes(pid, field) / 1024;
    const QDir tasks(QStringLiteral("/proc/%1/task").arg(pid));
    for (const QString& task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile children(tasks.filePath(task + QStringLiteral("/children")));
        if (!children.open(QIODevice::ReadOnly))
            continue;
        for (const QByteArray& child : children.readAll().simplified().split(' ')) {
            if (!child.isEmpty())
                sum += familyMemory(child.toLongLong(), field);
        }
    }
    return sum;
}

class History {
public:
    virtual ~History() = default;
    virtual void start() = 0;
    virtual void stop() = 0;
    [[nodiscard]] virtual qint64 pid() const = 0;
    /// From here on hasEntry() can be asked.
    virtual void beginToWatch() = 0;
    virtual bool hasEntry(const QString& text) = 0;
};

/// The entry counts once it is in the list on the disk, which is written last.
class OurHistory : public History {
public:
    void start() override { m_program.start(); }
    void stop() override { m_program.stop(); }
    [[nodiscard]] qint64 pid() const override { return m_program.pid(); }
    void beginToWatch() override {}
    bool hasEntry(const QString& text) override
    {
        // The newest entry stands at the beginning; the rest needn't be read.
        QFile file(m_program.historyFile());
        return file.open(QIODevice::ReadOnly) && file.read(1000).contains(text.toUtf8());
    }

private:
    Orvane m_program{texts, texts};
};

/// The entry counts once a client of CopyQ, started anew for each look, is told of it. The time is too long
/// by the duration of one look, which is reported beside it.
class CopyQ : public History {
public:
    /// Returns the milliseconds that one look takes.
    double look()
    {
        QElapsedTimer clock;
        clock.start();
        (void)hasEntry(QString());
        return milliseconds(clock);
    }

    CopyQ()
    {
        CopyQ::start();
        waitFor("CopyQ doesn't answer", [this] { return run({QStringLiteral("count")}) == "0"; });
        std::ignore = run({QStringLiteral("config"), QStringLiteral("maxitems"), QString::number(texts)});
        QStringList add{QStringLiteral("add")};
        for (int i = texts - 1; i >= 0; --i)
            add.append(paragraph(i));
        std::ignore = run(add);
        if (run({QStringLiteral("count")}) != QByteArray::number(texts))
            qFatal("CopyQ hasn't taken the texts");
        CopyQ::stop();
    }
    ~CopyQ() override { CopyQ::stop(); }

    void start() override
    {
        m_server.setProcessEnvironment(environment());
        m_server.setStandardOutputFile(QProcess::nullDevice());
        m_server.setStandardErrorFile(QProcess::nullDevice());
        m_server.start(program(), {});
    }
    void stop() override
    {
        if (m_server.state() == QProcess::NotRunning)
            return;
        std::ignore = run({QStringLiteral("exit")});
        if (!m_server.waitForFinished(10'000))
            m_server.kill();
        m_server.waitForFinished();
    }
    [[nodiscard]] qint64 pid() const override { return m_server.processId(); }
    void beginToWatch() override
    {
        waitFor("CopyQ doesn't answer",
                [this] { return run({QStringLiteral("count")}) == QByteArray::number(texts); });
    }
    bool hasEntry(const QString& text) override
    {
        return run({QStringLiteral("read"), QStringLiteral("0")}) == text.toUtf8();
    }

private:
    static QString program() { return QStandardPaths::findExecutable(QStringLiteral("copyq")); }
    [[nodiscard]] QProcessEnvironment environment() const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("COPYQ_SETTINGS_PATH"), m_home.filePath(QStringLiteral("config")));
        environment.insert(QStringLiteral("COPYQ_ITEM_DATA_PATH"), m_home.filePath(QStringLiteral("data")));
        return environment;
    }
    [[nodiscard]] QByteArray run(const QStringList& arguments) const
    {
        QProcess client;
        client.setProcessEnvironment(environment());
        client.start(program(), arguments);
        client.waitForFinished(30'000);
        return client.readAllStandardOutput().trimmed();
    }

    QTemporaryDir m_home;
    QProcess m_server;
};

struct Figures {
    std::vector<double> start, memory, dirty, read, entry;
};

/// Returns the milliseconds until the panel has the icon.
double startUp(History& history, Watcher& watcher)
{
    QEventLoop loop;
    QElapsedTimer clock;
    double time = 0;
    QObject::connect(&watcher, &Watcher::registered, &loop, [&] {
        time = milliseconds(clock);
        loop.quit();
    });
    QTimer::singleShot(20'000, &loop, [&loop] { loop.exit(1); });
    clock.start();
    history.start();
    if (loop.exec() != 0)
        qFatal("no status item is shown");
    return time;
}

void copies(History& history, int round, Figures& figures)
{
    constexpr int perRound = 8;
    history.beginToWatch();
    for (int i = 0; i < perRound; ++i) {
        // A poll can begin at any moment, so the copies are spread over its interval.
        turnFor(500 + (i * 137 + round * 61) % 400);
        const QString text = QStringLiteral("Copy %1 of round %2").arg(i).arg(round);
        QElapsedTimer clock;
        double read = -1;
        clock.start();
        QGuiApplication::clipboard()->setMimeData(new Copy(text, [&clock, &read] {
            if (read < 0)
                read = milliseconds(clock);
        }));
        waitFor("The copy doesn't become an entry", [&] { return history.hasEntry(text); });
        figures.entry.push_back(milliseconds(clock));
        figures.read.push_back(read);
    }
}

void report(const char* what, const std::vector<double>& ours, const std::vector<double>& theirs,
            const char* unit)
{
    std::printf("%-28s Orvane %8.1f %s   CopyQ %8.1f %s   ratio %.2f\n", what, median(ours), unit,
                median(theirs), unit, median(ours) / median(theirs));
}

} // namespace

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    if (QStandardPaths::findExecutable(QStringLiteral("copyq")).isEmpty())
        qFatal("CopyQ isn't installed");
    const int rounds = QCoreApplication::arguments().value(1, QStringLiteral("5")).toInt();
    Watcher watcher;
    OurHistory ours;
    CopyQ theirs;
    Figures figures[2];
    for (int round = 0; round < rounds + 1; ++round) {
        History* const histories[] = {&ours, &theirs};
        for (std::size_t which = 0; which < std::size(histories); ++which) {
            Figures taken;
            taken.start.push_back(startUp(*histories[which], watcher));
            turnFor(3000); // memory that is used after the icon shows counts too
            taken.memory.push_back(familyMemory(histories[which]->pid(), "Pss"));
            taken.dirty.push_back(familyMemory(histories[which]->pid(), "Private_Dirty"));
            histories[which]->stop();
            if (round == 0)
                continue; // the first round warms the page cache
            Figures& all = figures[which];
            all.start.insert(all.start.end(), taken.start.begin(), taken.start.end());
            all.memory.insert(all.memory.end(), taken.memory.begin(), taken.memory.end());
            all.dirty.insert(all.dirty.end(), taken.dirty.begin(), taken.dirty.end());
        }
    }
    report("start to icon", figures[0].start, figures[1].start, "ms");
    report("memory (PSS), 1,000 texts", figures[0].memory, figures[1].memory, "MB");
    report("private dirty", figures[0].dirty, figures[1].dirty, "MB");
    std::fflush(stdout);
    double look = 0;
    // A copy pushes a text out of the list, so the copies come last.
    for (std::size_t which = 0; which < std::size(figures); ++which) {
        History& history = which == 0 ? static_cast<History&>(ours) : theirs;
        (void)startUp(history, watcher);
        turnFor(3000);
        copies(history, rounds, figures[which]);
        if (&history == &theirs)
            look = theirs.look();
        history.stop();
    }
    report("copy to its being read", figures[0].read, figures[1].read, "ms");
    report("copy to entry", figures[0].entry, figures[1].entry, "ms");
    std::printf("a look at CopyQ's list takes %.1f ms of that\n", look);
    return 0;
}

#include "ClipboardBeside.moc"
