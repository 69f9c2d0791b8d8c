// Answers that a worker which somebody else has taken over could give.
#include "PicturesFixture.h"

#include <fstream>

#include <sys/stat.h>

namespace orvane::tests {

using namespace WorkerProtocol;

namespace {

using Bytes = std::vector<std::byte>;

constexpr Header request{.kind = Kind::measure, .number = 7};

bool isAnswer(const Bytes& bytes)
{
    return WorkerClient::answerTo(request, bytes).has_value();
}

bool isAnswer(const Header& header, const Bytes& payload = {})
{
    return isAnswer(encode(header, payload));
}

class WorkerAnswersTest : public PicturesFixture {
protected:
    /// Returns the path of a program that answers each request with a payload, and writes "abc" to the second
    /// descriptor where there is one.
    [[nodiscard]] QByteArray programThatAnswers(const Bytes& payload) const
    {
        QByteArray numbers;
        for (const std::byte byte : payload)
            numbers += QByteArray::number(static_cast<int>(byte)) + ',';
        const QByteArray program = QFile::encodeName(path(QStringLiteral("program")));
        std::ofstream(program.toStdString()) << R"(#!/usr/bin/python3
import os, socket
peer = socket.socket(fileno=3)
while True:
    message, descriptors, _, _ = socket.recv_fds(peer, 4096, 2)
    if not message:
        break
    if len(descriptors) > 1:
        os.write(descriptors[1], b"abc")
    for descriptor in descriptors:
        os.close(descriptor)
    payload = bytes([)" << numbers.toStdString()
                                             << R"(])
    peer.send(message[:14] + len(payload).to_bytes(2, "little") + payload)
)";
        EXPECT_EQ(::chmod(program.constData(), 0700), 0);
        return program;
    }

    [[nodiscard]] std::optional<Pictures::Size> sizeBy(PictureSize answer)
    {
        WorkerPictures other(programThatAnswers(bytesOf(answer)), log, limit);
        return other.measure(path(QStringLiteral("a.png")), {});
    }
    [[nodiscard]] std::optional<QString> copyBy(const Bytes& answer)
    {
        WorkerPictures other(programThatAnswers(answer), log, limit);
        return other.writeCopy({path(QStringLiteral("a.png")),
                                {40, 30},
                                {20, 15},
                                Pictures::Type::png,
                                1,
                                [this](int) { return path(QStringLiteral("copy.png")); }},
                               {});
    }
};

} // namespace

TEST(WorkerAnswerTest, OnlyTheAnswerToTheRequestIsTaken)
{
    EXPECT_TRUE(isAnswer(request));
    EXPECT_TRUE(isAnswer({.kind = Kind::measure, .number = 7, .status = Status::failed}));
    EXPECT_TRUE(isAnswer({.kind = Kind::measure, .number = 7, .status = Status::refused}));

    const Bytes one(1);
    EXPECT_FALSE(isAnswer({.kind = Kind::measure, .number = 6}));
    EXPECT_FALSE(isAnswer({.kind = Kind::resize, .number = 7}));
    EXPECT_FALSE(isAnswer({.magic = 1, .kind = Kind::measure, .number = 7}));
    EXPECT_FALSE(isAnswer({.version = version + 1, .kind = Kind::measure, .number = 7}));
    EXPECT_FALSE(isAnswer({.kind = Kind::measure, .number = 7, .status = Status{3}}));
    EXPECT_FALSE(isAnswer({.kind = Kind::measure, .number = 7, .status = Status::failed}, one));
    EXPECT_FALSE(isAnswer({.kind = Kind::measure, .number = 7, .status = Status::refused}, one));
    EXPECT_FALSE(isAnswer(Bytes{}));
    Bytes message = encode(request, {});
    message.pop_back();
    EXPECT_FALSE(isAnswer(message));
    message.resize(sizeof(Header) + 1);
    EXPECT_FALSE(isAnswer(message)); // longer than it says
}

TEST_F(WorkerAnswersTest, ASizeThatCanNotBeIsNoSize)
{
    addPicture(QStringLiteral("a.png"));
    EXPECT_EQ(sizeBy({40, 30}), (Pictures::Size{40, 30}));
    EXPECT_FALSE(sizeBy({0, 30}));
    EXPECT_FALSE(sizeBy({40, 0}));
    EXPECT_FALSE(sizeBy({longestSide + 1, 1}));
    EXPECT_FALSE(sizeBy({1, 0xFFFFFFFF}));
    EXPECT_FALSE(sizeBy({100'000, 100'000}));
}

TEST_F(WorkerAnswersTest, AThumbnailIsNeverLargerThanTheMemory)
{
    addPicture(QStringLiteral("a.png"));
    const auto isThumbnail = [this](PictureSize answer) {
        WorkerPictures other(programThatAnswers(bytesOf(answer)), log, limit);
        return other.thumbnail(path(QStringLiteral("a.png")), {16, 16}, {}).has_value();
    };
    EXPECT_TRUE(isThumbnail({16, 16}));
    EXPECT_FALSE(isThumbnail({17, 1}));
    EXPECT_FALSE(isThumbnail({1, 17}));
}

TEST_F(WorkerAnswersTest, ACopyHasAsManyBytesAsWasSaid)
{
    addPicture(QStringLiteral("a.png"));
    EXPECT_FALSE(copyBy(bytesOf(Written{2})));
    EXPECT_FALSE(copyBy(bytesOf(Written{4})));
    EXPECT_FALSE(copyBy({}));
    EXPECT_EQ(names(), (QStringList{QStringLiteral("a.png"), QStringLiteral("program")}));
    EXPECT_EQ(copyBy(bytesOf(Written{3})), path(QStringLiteral("copy.png")));
}

} // namespace orvane::tests
