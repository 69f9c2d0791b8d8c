#include "Desktop/Support/Program.h"

#include "Desktop/Support/Bus.h"
#include "Support/Eventually.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSocketNotifier>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <stdexcept>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

namespace orvane::tests {

namespace {

QByteArray withFirstRunDone(const QByteArray& defaults)
{
    QJsonObject all = QJsonDocument::fromJson(defaults).object();
    all.insert(QStringLiteral("hasOnboarded"), true);
    return QJsonDocument(all).toJson();
}

} // namespace

Program::Program(Start start) : m_start(std::move(start))
{
    if (m_start.firstRun == FirstRun::done)
        m_start.defaults = withFirstRunDone(m_start.defaults.value_or(QByteArray()));
    if (m_start.defaults) {
        QDir().mkpath(m_start.home->configDirectory() + QLatin1String("/orvane"));
        QFile file(defaultsFile());
        if (!file.open(QFile::WriteOnly) || file.write(*m_start.defaults) != m_start.defaults->size())
            throw std::runtime_error("The defaults file can't be written");
    }
    this->start();
}

Program::~Program()
{
    if (isRunning()) {
        signal(SIGTERM);
        if (!wait(5s)) {
            kill9();
            static_cast<void>(wait(5s));
        }
    }
    readTerminal();
    if (::testing::Test::HasFailure()) {
        for (const QString& line : m_log)
            std::fprintf(stderr, "    program: %s\n", qUtf8Printable(line));
    }
    m_terminalNotifier.reset();
    ::close(m_terminal);
}

QString Program::builtProgram()
{
    return QStringLiteral(ORVANE_PROGRAM);
}

QString Program::defaultsFile() const
{
    return m_start.home->configDirectory() + QLatin1String("/orvane/defaults.json");
}

void Program::start()
{
    int ofProgram = -1;
    if (::openpty(&m_terminal, &ofProgram, nullptr, nullptr, nullptr) != 0)
        throw std::runtime_error("There is no pseudo-terminal to be had");
    termios settings{};
    ::tcgetattr(ofProgram, &settings);
    ::cfmakeraw(&settings); // lines end as they were written
    ::tcsetattr(ofProgram, TCSANOW, &settings);
    ::fcntl(m_terminal, F_SETFL, O_NONBLOCK);
    ::fcntl(m_terminal, F_SETFD, FD_CLOEXEC);

    m_terminalNotifier = std::make_unique<QSocketNotifier>(m_terminal, QSocketNotifier::Read);
    QObject::connect(m_terminalNotifier.get(), &QSocketNotifier::activated, [this] { readTerminal(); });

    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    m_start.home->applyTo(environment);
    for (auto it = m_start.environment.cbegin(); it != m_start.environment.cend(); ++it) {
        if (it.value().isNull())
            environment.remove(it.key());
        else
            environment.insert(it.key(), it.value());
    }
    m_process.setProcessEnvironment(environment);
    m_process.setProcessChannelMode(QProcess::ForwardedChannels);
    m_process.setChildProcessModifier([ofProgram] {
        ::dup2(ofProgram, STDERR_FILENO);
        ::close(ofProgram);
    });
    m_process.start(m_start.executable, m_start.arguments);
    ::close(ofProgram);
    if (!m_process.waitForStarted(10'000))
        throw std::runtime_error("It can't be started: " + m_start.executable.toStdString());
    m_pid = m_process.processId();
}

void Program::readTerminal()
{
    char buffer[4096];
    ssize_t count = 0;
    while ((count = ::read(m_terminal, buffer, sizeof buffer)) > 0)
        m_unfinishedLine.append(buffer, count);
    // The terminal reports an error after the program's end, and is readable for ever then.
    if (count == 0 || (errno != EAGAIN && errno != EINTR))
        m_terminalNotifier->setEnabled(false);

    qsizetype end = 0;
    while ((end = m_unfinishedLine.indexOf('\n')) >= 0) {
        m_log.append(QString::fromUtf8(m_unfinishedLine.first(end)));
        m_unfinishedLine.remove(0, end + 1);
    }
}

bool Program::ownsItsName() const
{
    return processOnSessionBus(m_start.busName) == m_pid;
}

bool Program::waitUntilReady(std::chrono::milliseconds deadline)
{
    bool ready = false;
    const bool decided = eventually(
        deadline, [&] { return (ready = ownsItsName()) || m_process.state() == QProcess::NotRunning; });
    return decided && ready;
}

std::optional<QString> Program::waitForLog(const QRegularExpression& pattern,
                                           std::chrono::milliseconds deadline)
{
    std::optional<QString> found;
    const auto look = [&] {
        while (!found && m_nextLine < m_log.size()) {
            const QString& line = m_log.at(m_nextLine++);
            if (pattern.match(line).hasMatch())
                found = line;
        }
    };
    static_cast<void>(eventually(deadline, [&] {
        const bool ended = m_process.state() == QProcess::NotRunning;
        readTerminal();
        look();
        return found || ended;
    }));
    return found;
}

const QStringList& Program::log()
{
    readTerminal();
    return m_log;
}

void Program::signal(int number)
{
    // The number of a process that has ended may belong to another one.
    if (isRunning())
        ::kill(static_cast<pid_t>(m_pid), number);
}

void Program::kill9()
{
    signal(SIGKILL);
}

bool Program::isRunning()
{
    return m_process.state() != QProcess::NotRunning;
}

std::optional<Program::Exit> Program::wait(std::chrono::milliseconds deadline)
{
    if (!eventually(deadline, [this] { return !isRunning(); }))
        return std::nullopt;
    if (m_process.exitStatus() == QProcess::CrashExit)
        return Exit{.code = 0, .signal = m_process.exitCode()};
    return Exit{.code = m_process.exitCode(), .signal = 0};
}

} // namespace orvane::tests
