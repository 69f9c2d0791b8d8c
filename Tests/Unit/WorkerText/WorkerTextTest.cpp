// Reading of text by the real worker, and by programs in its place.
#include "Fakes/FakeLogSink.h"
#include "PlatformLinux/Common/HelperProgram.h"
#include "PlatformLinux/Worker/WorkerTextRecognition.h"
#include "Support/Eventually.h"
#include "Support/RenderedText.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <atomic>
#include <csignal>
#include <fstream>
#include <thread>

#include <sys/stat.h>

namespace orvane::tests {

namespace {

using namespace WorkerProtocol;
using namespace std::chrono_literals;

const QStringList modelFolders{QStringLiteral("/usr/share/tesseract-ocr/5/tessdata")};

/// Returns the processes that this one has started and that still run.
QList<pid_t> workers()
{
    QList<pid_t> found;
    const QString threads = QStringLiteral("/proc/self/task");
    for (const QString& thread : QDir(threads).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile children(threads + u'/' + thread + QStringLiteral("/children"));
        if (!children.open(QFile::ReadOnly))
            continue;
        for (const QByteArray& child : children.readAll().split(' ')) {
            if (child.toInt() > 0)
                found.append(child.toInt());
        }
    }
    return found;
}

/// Returns the time that a process has computed for, in ticks.
long processorTime(pid_t process)
{
    QFile state(QStringLiteral("/proc/%1/stat").arg(process));
    constexpr int place = 13;
    return state.open(QFile::ReadOnly) ? state.readAll().split(' ').value(place).toLong() : 0;
}

struct WorkerTextTest : ::testing::Test {
    [[nodiscard]] static std::function<TextLanguages()> languages(const QStringList& codes)
    {
        return [codes] { return TextLanguages(codes, modelFolders); };
    }

    /// Reads by a program that writes `bytes` into the memory and answers with a payload.
    template <typename Payload>
    [[nodiscard]] std::optional<QStringList> readBy(const QByteArray& bytes, const Payload& payload)
    {
        QByteArray numbers;
        for (const std::byte byte : bytesOf(payload))
            numbers += QByteArray::number(static_cast<int>(byte)) + ',';
        const QByteArray program = QFile::encodeName(folder.filePath(QStringLiteral("program")));
        std::ofstream(program.toStdString()) << R"(#!/usr/bin/python3
import os, socket
peer = socket.socket(fileno=3)
while True:
    message, descriptors, _, _ = socket.recv_fds(peer, 4096, 5)
    if not message:
        break
    os.pwrite(descriptors[0], bytes.fromhex(")"
                                             << bytes.toHex().toStdString() << R"("), 0)
    for descriptor in descriptors:
        os.close(descriptor)
    payload = bytes([)" << numbers.toStdString()
                                             << R"(])
    peer.send(message[:14] + len(payload).to_bytes(2, "little") + payload)
)";
        EXPECT_EQ(::chmod(program.constData(), 0700), 0);
        WorkerTextRecognition other(program, languages({QStringLiteral("eng")}), log, 60s);
        return other.recognize(renderedText({QStringLiteral("Text")}), {});
    }

    QTemporaryDir folder;
    FakeLogSink log;
    WorkerTextRecognition recognition{helperProgram("orvane-worker"), languages({QStringLiteral("eng")}), log,
                                      120s};
    const QStringList text{QStringLiteral("Some text to be read")};
};

} // namespace

TEST_F(WorkerTextTest, OneWorkerServesAllRequests)
{
    EXPECT_TRUE(workers().isEmpty());
    recognition.prepare({});
    const auto first = workers();
    ASSERT_EQ(first.size(), 1);
    EXPECT_EQ(recognition.recognize(renderedText(text), {}), text);
    EXPECT_EQ(recognition.recognize(renderedText(text), {}), text);
    EXPECT_EQ(workers(), first);
}

TEST_F(WorkerTextTest, LightOnDarkIsReadToo)
{
    auto image = renderedText(text);
    for (char& byte : image.pixels)
        byte = static_cast<char>(~byte);
    EXPECT_EQ(recognition.recognize(image, {}), text);
}

TEST_F(WorkerTextTest, AWorkerThatIsKilledWhileItReadsFailsThatOneReading)
{
    recognition.prepare({});
    // So much that it reads for a while.
    const auto image = renderedText(QStringList(60, QString(60, u'W') + QStringLiteral(" and more text")));
    std::atomic<bool> isDone = false;
    std::optional<QStringList> read = QStringList();
    std::thread reader([&] {
        read = recognition.recognize(image, {});
        isDone = true;
    });
    EXPECT_TRUE(eventually(60s, [] { return !workers().isEmpty(); }));
    const pid_t worker = workers().value(0);
    const long before = processorTime(worker);
    EXPECT_TRUE(eventually(60s, [&] { return processorTime(worker) > before + 2; })); // it reads
    EXPECT_TRUE(worker > 0 && ::kill(worker, SIGKILL) == 0);
    EXPECT_TRUE(eventually(60s, [&] { return isDone.load(); }));
    reader.join();
    EXPECT_FALSE(read);
    EXPECT_EQ(recognition.recognize(renderedText(text), {}), text);
    EXPECT_NE(workers().value(0), worker);
}

TEST_F(WorkerTextTest, GermanIsReadWithItsModel)
{
    WorkerTextRecognition german(helperProgram("orvane-worker"),
                                 languages({QStringLiteral("deu"), QStringLiteral("eng")}), log, 120s);
    const QStringList lines{QStringLiteral("Größere Äpfel für die Übung")};
    EXPECT_EQ(german.recognize(renderedText(lines), {}), lines);
}

TEST_F(WorkerTextTest, WithoutAModelThereIsNoWorker)
{
    WorkerTextRecognition none(helperProgram("orvane-worker"), languages({QStringLiteral("none")}), log, 60s);
    none.prepare({});
    EXPECT_FALSE(none.recognize(renderedText(text), {}));
    EXPECT_TRUE(workers().isEmpty());
}

TEST_F(WorkerTextTest, ADamagedModelFailsAndTheNextReadingWorks)
{
    QFile file(folder.filePath(QStringLiteral("eng.traineddata")));
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.write(QByteArray(1000, 'x'));
    file.close();
    QStringList folders{folder.path()};
    WorkerTextRecognition damaged(
        helperProgram("orvane-worker"),
        [&folders] { return TextLanguages({QStringLiteral("eng")}, folders); }, log, 120s);
    EXPECT_FALSE(damaged.recognize(renderedText(text), {}));
    folders = modelFolders;
    EXPECT_EQ(damaged.recognize(renderedText(text), {}), text);
}

TEST_F(WorkerTextTest, AnAnswerThatCanNotBeIsNoText)
{
    EXPECT_EQ(readBy("ab\ncd\n", Written{6}), (QStringList{QStringLiteral("ab"), QStringLiteral("cd")}));
    EXPECT_FALSE(readBy("ab\n", Written{std::uint64_t{1} << 40}));
    EXPECT_FALSE(readBy("ab\n", PictureSize{1, 0}) == QStringList{QStringLiteral("ab")});
}

TEST_F(WorkerTextTest, CharactersThatAreNoTextAreLeftOut)
{
    EXPECT_EQ(readBy(" a\033[31mb \n \n", Written{11}), QStringList{QStringLiteral("a[31mb")});
    const auto invalid = readBy("\xFF\xFEz", Written{3});
    ASSERT_TRUE(invalid);
    EXPECT_EQ(invalid->size(), 1);
    EXPECT_TRUE(invalid->first().endsWith(u'z'));
}

} // namespace orvane::tests
