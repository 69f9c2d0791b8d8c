// The built program, started in a separate home and watched from outside. Its standard error is a terminal,
// so that it logs there, and is kept line by line. The program is ended with the object, and its log is
// printed when the test has failed by then.
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
        asStored, // as the defaults say: the first run is to come if they say nothing
        done,     // marks the first run as done in the defaults, which must be an object or absent
    };

    struct Start {
        /// The content of orvane/defaults.json; without one, no file is written.
        std::optional<QByteArray> defaults = {};
        FirstRun firstRun = FirstRun::asStored;
        /// Replaces variables of the test's environment; a null string removes one.
        QMap<QString, QString> environment = {};
        QStringList arguments = {};
        /// Given for a second start in the same home.
        std::shared_ptr<PrivateHome> home = std::make_shared<PrivateHome>();
        /// Given for another program than the built one, with the name that it owns when it is ready.
        QString executable = builtProgram();
        QString busName = QStringLiteral("net.lindenrow.orvane");
    };

    struct Exit {
        int code = 0;
        int signal = 0; // when not 0, the signal that killed it; the code means nothing then
    };

    /// Throws std::runtime_error when the program can't be started.
    explicit Program(Start start);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    [[nodiscard]] static QString builtProgram();
    [[nodiscard]] qint64 pid() const { return m_pid; }
    [[nodiscard]] const std::shared_ptr<PrivateHome>& home() const { return m_start.home; }
    [[nodiscard]] QString defaultsFile() const;

    /// True once this process owns its name on the session bus; false at the deadline or when it ends.
    [[nodiscard]] bool waitUntilReady(std::chrono::milliseconds deadline = std::chrono::seconds(20));
    /// Returns the next line that matches, after the one that the last call returned; nothing at the deadline
    /// or at the program's end.
    [[nodiscard]] std::optional<QString>
    waitForLog(const QRegularExpression& pattern,
               std::chrono::milliseconds deadline = std::chrono::seconds(10));
    /// Returns all lines so far.
    [[nodiscard]] const QStringList& log();

    void signal(int number);
    void kill9();
    [[nodiscard]] bool isRunning();
    /// Returns how it ended; nothing when it still runs at the deadline.
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
