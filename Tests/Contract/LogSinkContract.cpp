#include "Fakes/FakeLogSink.h"
#include "PlatformLinux/Session/JournalLogSink.h"
#include "Support/JournalStandIn.h"

#include <QRegularExpression>
#include <QTemporaryFile>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <thread>
#include <vector>

namespace orvane::tests {

namespace {

/// A log, and what has arrived in it since the last look, as "level [category] message".
class Subject {
public:
    virtual ~Subject() = default;
    virtual LogSink& log() = 0;
    virtual QStringList arrived() = 0;
};

class FakeSubject : public Subject {
public:
    LogSink& log() override { return m_log; }

    QStringList arrived() override
    {
        const QStringList names = {QStringLiteral("info"), QStringLiteral("notice"), QStringLiteral("error"),
                                   QStringLiteral("fault")};
        QStringList lines;
        const auto entries = m_log.entries();
        for (; m_seen < entries.size(); ++m_seen) {
            const auto& entry = entries[m_seen];
            lines.append(QStringLiteral("%1 [%2] %3")
                             .arg(names.at(static_cast<int>(entry.level)), entry.category, entry.message));
        }
        return lines;
    }

private:
    FakeLogSink m_log;
    std::size_t m_seen = 0;
};

class JournalSubject : public Subject {
public:
    LogSink& log() override { return m_log; }

    QStringList arrived() override
    {
        const QMap<QByteArray, QString> names = {{"6", QStringLiteral("info")},
                                                 {"5", QStringLiteral("notice")},
                                                 {"3", QStringLiteral("error")},
                                                 {"2", QStringLiteral("fault")}};
        QStringList lines;
        while (const auto entry = m_journal.next())
            lines.append(QStringLiteral("%1 [%2] %3")
                             .arg(names.value(entry->value("PRIORITY")),
                                  QString::fromUtf8(entry->value("CATEGORY")),
                                  QString::fromUtf8(entry->value("MESSAGE"))));
        return lines;
    }

private:
    JournalStandIn m_journal;
    JournalLogSink m_log{m_journal.path(), -1};
};

class StandardErrorSubject : public Subject {
public:
    StandardErrorSubject()
    {
        m_file.open();
        m_log = std::make_unique<JournalLogSink>("/nonexistent/socket", m_file.handle());
    }
    LogSink& log() override { return *m_log; }

    QStringList arrived() override
    {
        QFile reading(m_file.fileName());
        EXPECT_TRUE(reading.open(QIODevice::ReadOnly) && reading.seek(m_seen));
        const QByteArray text = reading.readAll();
        m_seen += text.size();
        QStringList lines;
        static const QRegularExpression time(QStringLiteral("^\\d\\d:\\d\\d:\\d\\d "));
        for (const QString& line : QString::fromUtf8(text).split(u'\n', Qt::SkipEmptyParts)) {
            EXPECT_TRUE(time.match(line).hasMatch()) << line.toStdString();
            lines.append(QString(line).remove(time).replace(QLatin1String("\\n"), QLatin1String("\n")));
        }
        return lines;
    }

private:
    QTemporaryFile m_file;
    std::unique_ptr<JournalLogSink> m_log;
    qint64 m_seen = 0;
};

struct Implementation {
    const char* name;
    std::unique_ptr<Subject> (*make)();
};

const QString subsystem = QStringLiteral("net.lindenrow.orvane");
const QString category = QStringLiteral("Test");

} // namespace

class LogSinkContract : public ::testing::TestWithParam<Implementation> {
protected:
    void write(LogLevel level, const QString& message)
    {
        m_subject->log().write(level, subsystem, category, message);
    }

    std::unique_ptr<Subject> m_subject = GetParam().make();
};

INSTANTIATE_TEST_SUITE_P(Platforms, LogSinkContract,
                         ::testing::Values(Implementation{"Fake",
                                                          []() -> std::unique_ptr<Subject> {
                                                              return std::make_unique<FakeSubject>();
                                                          }},
                                           Implementation{"Journal",
                                                          []() -> std::unique_ptr<Subject> {
                                                              return std::make_unique<JournalSubject>();
                                                          }},
                                           Implementation{"StandardError",
                                                          []() -> std::unique_ptr<Subject> {
                                                              return std::make_unique<StandardErrorSubject>();
                                                          }}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_P(LogSinkContract, AnEntryArrivesWithItsLevelAndCategory)
{
    write(LogLevel::info, QStringLiteral("one"));
    write(LogLevel::notice, QStringLiteral("two"));
    write(LogLevel::error, QStringLiteral("three"));
    write(LogLevel::fault, QStringLiteral("four"));
    EXPECT_EQ(m_subject->arrived(),
              (QStringList{QStringLiteral("info [Test] one"), QStringLiteral("notice [Test] two"),
                           QStringLiteral("error [Test] three"), QStringLiteral("fault [Test] four")}));
}

TEST_P(LogSinkContract, AMessageOfSeveralLinesIsOneEntry)
{
    write(LogLevel::info, QStringLiteral("first\nPRIORITY=0\nthird"));
    EXPECT_EQ(m_subject->arrived(), QStringList{QStringLiteral("info [Test] first\nPRIORITY=0\nthird")});
}

TEST_P(LogSinkContract, AnyTextIsAMessage)
{
    const QStringList texts = {QStringLiteral("\u00e9 \U0001f600"), QStringLiteral("100 %s %n %1"),
                               QStringLiteral("=")};
    for (const QString& text : texts) {
        write(LogLevel::info, text);
        EXPECT_EQ(m_subject->arrived(), QStringList{QString(QLatin1String("info [Test] ") + text)});
    }
}

TEST_P(LogSinkContract, EntriesOfSeveralThreadsArriveWhole)
{
    // The number is small enough for the queue of a socket that nobody reads meanwhile.
    std::vector<std::thread> threads;
    QStringList expected;
    for (int index = 0; index < 4; ++index) {
        const QString text = QString(100, QLatin1Char(static_cast<char>('a' + index)));
        expected +=
            {QString(QLatin1String("info [Test] ") + text), QString(QLatin1String("info [Test] ") + text)};
        threads.emplace_back([this, text] {
            write(LogLevel::info, text);
            write(LogLevel::info, text);
        });
    }
    for (auto& thread : threads)
        thread.join();
    QStringList arrived = m_subject->arrived();
    arrived.sort();
    EXPECT_EQ(arrived, expected);
}

} // namespace orvane::tests
