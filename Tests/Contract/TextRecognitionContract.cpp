#include "Fakes/FakeLogSink.h"
#include "Fakes/FakeTextRecognition.h"
#include "PlatformLinux/Worker/WorkerTextRecognition.h"
#include "Support/RenderedText.h"

#include <gtest/gtest.h>

namespace orvane::tests {

namespace {

class FakeReader {
public:
    TextRecognition& recognition() { return m_recognition; }
    [[nodiscard]] TextRecognition::Image pictureOf(const QStringList& lines)
    {
        const auto image = renderedText(lines);
        m_recognition.add(image.pixels, lines);
        return image;
    }

private:
    FakeTextRecognition m_recognition;
};

class RealReader {
public:
    TextRecognition& recognition() { return m_recognition; }
    [[nodiscard]] static TextRecognition::Image pictureOf(const QStringList& lines)
    {
        return renderedText(lines);
    }

private:
    FakeLogSink m_log;
    WorkerTextRecognition m_recognition{m_log};
};

template <typename Reader>
class TextRecognitionContract : public ::testing::Test {
protected:
    Reader reader;
};

using Readers = ::testing::Types<FakeReader, RealReader>;
TYPED_TEST_SUITE(TextRecognitionContract, Readers);

} // namespace

TYPED_TEST(TextRecognitionContract, ReadsTheLinesFromTheTop)
{
    const QStringList lines{QStringLiteral("The first line of text"), QStringLiteral("and one below it")};
    TextRecognition& recognition = this->reader.recognition();
    recognition.prepare({});
    EXPECT_EQ(recognition.recognize(this->reader.pictureOf(lines), {}), lines);
}

TYPED_TEST(TextRecognitionContract, APictureWithoutTextHasNoLines)
{
    TextRecognition& recognition = this->reader.recognition();
    EXPECT_EQ(recognition.recognize(this->reader.pictureOf({}), {}), QStringList());
}

TYPED_TEST(TextRecognitionContract, ASizeThatDoesNotFitThePixelsIsNotRead)
{
    TextRecognition& recognition = this->reader.recognition();
    auto image = this->reader.pictureOf({QStringLiteral("Text")});
    image.height += 1;
    EXPECT_FALSE(recognition.recognize(image, {}));
    EXPECT_FALSE(recognition.recognize({0, 0, {}}, {}));
    EXPECT_FALSE(recognition.recognize({-1, -1, QByteArray(4, '\0')}, {}));
}

TYPED_TEST(TextRecognitionContract, NothingIsReadAfterAStop)
{
    std::stop_source stop;
    stop.request_stop();
    TextRecognition& recognition = this->reader.recognition();
    EXPECT_FALSE(recognition.recognize(this->reader.pictureOf({QStringLiteral("Text")}), stop.get_token()));
}

TYPED_TEST(TextRecognitionContract, EnglishIsInUse)
{
    const auto names = this->reader.recognition().languages().inUse;
    EXPECT_TRUE(std::ranges::any_of(names, [](const QString& name) {
        return name.contains(QStringLiteral("English"));
    })) << names.join(u' ').toStdString();
}

} // namespace orvane::tests
