// The built program, started in a home of its own and watched from outside. Its standard error is a
// terminal, so that it logs there, and is kept line by line. It is ended with the object, and what it
// logged is printed when the test has failed by then.
#pragma once

#include "Support/PrivateHome.h"

#include <QMap>
#include <QProcess>
#include <QRegularExpression>
#include <QStringList>

#include <chrono>
#include <memory>
#include <optional>

class QSocketNotifier;

namespace orvane::tests {

class Program {
public:
    enum class FirstRun {
        asStored, // by the defaults: without them, it lies ahead
        done,     // enters in the defaults, which must be an object or absent, that it lies behind
    };

    struct Start {
        /// The content of orvane/defaults.json; without one, no file is written.
        std::optional<QByteArray> defaults = {};
        FirstRun firstRun = FirstRun::asStored;
        /// Over the environment of the test; a null string takes a variable away.
        QMap<QString, QString> environment = {};
        QStringList arguments = {};
        /// For a second start on the same home.
        std::shared_ptr<PrivateHome> home = std::make_shared<PrivateHome>();
        /// For another program than the built one, and the name that it owns when it is ready.
        QString executable = builtProgram();
        QString busName = QStringLiteral("net.lindenrow.orvane");
    };

    struct Exit {
        int code = 0;
        int signal = 0; // not 0: it was killed by this, and the code means nothing
    };

    /// Throws std::runtime_error when it can't be started.
    explicit Program(Start start);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    [[nodiscard]] static QString builtProgram();
    [[nodiscard]] qint64 pid() const { return m_pid; }
    [[nodiscard]] const std::shared_ptr<PrivateHome>& home() const { return m_start.home; }
    [[nodiscard]] QString defaultsFile() const;

    /// True once this process owns its name on the session bus; false at the deadline or at its end.
    [[nodiscard]] bool waitUntilReady(std::chrono::milliseconds deadline = std::chrono::seconds(20));
    /// The next line that matches, after the one that the last call returned; nothing at the deadline or at
    /// the program's end.
    [[nodiscard]] std::optional<QString>
    waitForLog(const QRegularExpression& pattern,
               std::chrono::milliseconds deadline = std::chrono::seconds(10));
    /// All lines so far.
    [[nodiscard]] const QStringList& log();

    void signal(int number);
    void kill9();
    [[nodiscard]] bool isRunning();
    /// How it ended; nothing when it is still there at the deadline.
    [[nodiscard]] std::optional<Exit> wait(std::chrono::milliseconds deadline = std::chrono::seconds(10));

private:
    void start();
    void readTerminal();
    [[nodiscard]] bool ownsItsName() const;

    Start m_start;
    QProcess m_process;
    qint64 m_pid = 0;
    int m_terminal = -1;
    std::unique_ptr<QSocketNotifier> m_terminalNotifier;
    QByteArray m_unfinishedLine;
    QStringList m_log;
    qsizetype m_nextLine = 0;
};

} // namespace orvane::tests
