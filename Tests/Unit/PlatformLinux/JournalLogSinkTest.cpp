#include "PlatformLinux/Session/JournalLogSink.h"
#include "ChildProcess.h"
#include "Support/JournalStandIn.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <poll.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <termios.h>

#include <cstdlib>

namespace orvane::tests {

namespace {

const QString subsystem = QStringLiteral("net.lindenrow.orvane");
const QString category = QStringLiteral("Defaults");

/// A pipe or terminal in place of standard error.
class Ends {
public:
    static Ends pipe()
    {
        int ends[2] = {-1, -1};
        EXPECT_EQ(::pipe2(ends, O_CLOEXEC), 0);
        return {ends[0], ends[1]};
    }
    static Ends terminal()
    {
        const int master = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
        EXPECT_EQ(::grantpt(master), 0);
        EXPECT_EQ(::unlockpt(master), 0);
        const int slave = ::open(::ptsname(master), O_RDWR | O_NOCTTY | O_CLOEXEC);
        termios settings = {};
        EXPECT_EQ(::tcgetattr(slave, &settings), 0);
        settings.c_oflag &= ~static_cast<tcflag_t>(OPOST); // no carriage returns
        EXPECT_EQ(::tcsetattr(slave, TCSANOW, &settings), 0);
        return {master, slave};
    }

    [[nodiscard]] int writer() const { return m_writer.get(); }
    void closeReader() { m_reader.reset(); }
    /// Returns what can be read now.
    [[nodiscard]] QByteArray arrived() const
    {
        QByteArray text;
        pollfd request = {m_reader.get(), POLLIN, 0};
        while (::poll(&request, 1, 0) == 1 && (request.revents & POLLIN) != 0) {
            char buffer[65536];
            const ssize_t count = ::read(m_reader.get(), buffer, sizeof buffer);
            if (count <= 0)
                break;
            text.append(buffer, count);
        }
        return text;
    }

private:
    Ends(int reader, int writer) : m_reader(reader), m_writer(writer) {}

    FileDescriptor m_reader;
    FileDescriptor m_writer;
};

} // namespace

TEST(JournalLogSink, TheJournalGetsEveryField)
{
    JournalStandIn journal;
    JournalLogSink log(journal.path(), -1);
    log.write(LogLevel::error, subsystem, category, QStringLiteral("a\nb"));
    EXPECT_EQ(journal.next(), (JournalStandIn::Entry{{"MESSAGE", "a\nb"},
                                                     {"PRIORITY", "3"},
                                                     {"SUBSYSTEM", "net.lindenrow.orvane"},
                                                     {"CATEGORY", "Defaults"},
                                                     {"SYSLOG_IDENTIFIER", "orvane"}}));
    EXPECT_FALSE(journal.next());
}

TEST(JournalLogSink, TheSystemsJournalIsWhereItIsByDefault)
{
    const std::string complaint = inChild([]() -> std::string {
        if (::unshare(CLONE_NEWNS) != 0 || ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            ::mount("none", "/run", "tmpfs", 0, nullptr) != 0)
            return "SKIP";
        ORVANE_REQUIRE(::mkdir("/run/systemd", 0755) == 0 && ::mkdir("/run/systemd/journal", 0755) == 0);
        JournalStandIn journal;
        ORVANE_REQUIRE(::symlink(journal.path().constData(), "/run/systemd/journal/socket") == 0);
        const FileDescriptor nowhere(::open("/dev/null", O_WRONLY | O_CLOEXEC));
        ORVANE_REQUIRE(::dup2(nowhere.get(), STDERR_FILENO) == STDERR_FILENO);
        JournalLogSink().write(LogLevel::fault, subsystem, category, QStringLiteral("here"));
        const auto entry = journal.next();
        ORVANE_REQUIRE(entry && entry->value("MESSAGE") == "here" && entry->value("PRIORITY") == "2");
        return {};
    });
    if (complaint == "SKIP")
        GTEST_SKIP() << "The journal's place can only be taken by root in a mount namespace.";
    EXPECT_EQ(complaint, "");
}

TEST(JournalLogSink, ATerminalIsPreferredToTheJournal)
{
    JournalStandIn journal;
    const Ends terminal = Ends::terminal();
    JournalLogSink log(journal.path(), terminal.writer());
    log.write(LogLevel::notice, subsystem, category, QStringLiteral("hello"));
    static const QRegularExpression line(
        QStringLiteral("^\\d\\d:\\d\\d:\\d\\d notice \\[Defaults\\] hello\n$"));
    const QString arrived = QString::fromUtf8(terminal.arrived());
    EXPECT_TRUE(line.match(arrived).hasMatch()) << arrived.toStdString();
    EXPECT_FALSE(journal.next());
}

TEST(JournalLogSink, APipeIsNotPreferredToTheJournal)
{
    JournalStandIn journal;
    const Ends pipe = Ends::pipe();
    JournalLogSink log(journal.path(), pipe.writer());
    log.write(LogLevel::info, subsystem, category, QStringLiteral("hello"));
    EXPECT_TRUE(journal.next());
    EXPECT_EQ(pipe.arrived(), QByteArray());
}

TEST(JournalLogSink, WithoutAJournalStandardErrorGetsOneLineForAnEntry)
{
    const Ends pipe = Ends::pipe();
    JournalLogSink log("/nonexistent/socket", pipe.writer());
    log.write(LogLevel::error, subsystem, category, QStringLiteral("a\nb\r\x1b[31mc\u00e9\x7f"));
    const QByteArray arrived = pipe.arrived();
    EXPECT_TRUE(arrived.endsWith(" error [Defaults] a\\nb\\r\\x1b[31mc\u00e9\\x7f\n"))
        << arrived.toStdString();
    EXPECT_EQ(arrived.count('\n'), 1);
}

TEST(JournalLogSink, AJournalThatGoesAwayIsReplacedByStandardError)
{
    const Ends pipe = Ends::pipe();
    auto journal = std::make_unique<JournalStandIn>();
    JournalLogSink log(journal->path(), pipe.writer());
    log.write(LogLevel::info, subsystem, category, QStringLiteral("one"));
    EXPECT_TRUE(journal->next());
    journal.reset();
    log.write(LogLevel::info, subsystem, category, QStringLiteral("two"));
    EXPECT_TRUE(pipe.arrived().contains("two"));
}

TEST(JournalLogSink, AStuckJournalIsNeverWaitedForAndTheGapIsTold)
{
    JournalStandIn journal;
    JournalLogSink log(journal.path(), -1);
    constexpr int entries = 5000; // more than any queue holds; the test is that the call returns
    for (int count = 0; count < entries; ++count)
        log.write(LogLevel::info, subsystem, category, QString(1000, u'x'));
    int queued = 0;
    while (journal.next())
        ++queued;
    ASSERT_GT(queued, 0);
    ASSERT_LT(queued, entries);
    log.write(LogLevel::info, subsystem, category, QStringLiteral("again"));
    const auto entry = journal.next();
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->value("MESSAGE"),
              "again (" + QByteArray::number(entries - queued) + " entries before this one were dropped)");
    log.write(LogLevel::info, subsystem, category, QStringLiteral("after"));
    EXPECT_EQ(journal.next()->value("MESSAGE"), QByteArray("after"));
}

TEST(JournalLogSink, AStuckReaderOfStandardErrorIsNeverWaitedFor)
{
    for (const Ends& ends : {Ends::pipe(), Ends::terminal()}) {
        JournalLogSink log("/nonexistent/socket", ends.writer());
        for (int count = 0; count < 1000; ++count)
            log.write(LogLevel::info, subsystem, category, QString(1000, u'x'));
        static_cast<void>(ends.arrived()); // makes room
        log.write(LogLevel::info, subsystem, category, QStringLiteral("again"));
        const QByteArray arrived = ends.arrived();
        EXPECT_TRUE(arrived.contains("[Defaults] again (")) << arrived.toStdString();
        // Other processes that share standard error still block on it if they like.
        EXPECT_EQ(::fcntl(ends.writer(), F_GETFL) & O_NONBLOCK, 0);
    }
}

TEST(JournalLogSink, ABrokenPipeDoesNotEndTheProcess)
{
    EXPECT_EQ(inChild([]() -> std::string {
                  Ends pipe = Ends::pipe();
                  pipe.closeReader();
                  JournalLogSink log("/nonexistent/socket", pipe.writer());
                  log.write(LogLevel::info, subsystem, category, QStringLiteral("hello"));
                  return {};
              }),
              "");
}

TEST(JournalLogSink, AVeryLongMessageIsCutBetweenTwoCharacters)
{
    JournalStandIn journal;
    JournalLogSink log(journal.path(), -1);
    log.write(LogLevel::info, subsystem, category, QString(u'x' + QString(1'000'000, QChar(0x20ac))));
    const auto entry = journal.next();
    ASSERT_TRUE(entry);
    const QByteArray message = entry->value("MESSAGE");
    EXPECT_TRUE(message.isValidUtf8());
    EXPECT_TRUE(message.endsWith("\u20ac..."));
    EXPECT_LT(message.size(), 40'000);
}

} // namespace orvane::tests
