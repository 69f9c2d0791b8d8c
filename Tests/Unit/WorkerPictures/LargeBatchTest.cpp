// A thousand files in one batch, while another program takes names that their copies would have.
#include "Capabilities/ImageResizer/ImageResizeEngine.h"
#include "PicturesFixture.h"

#include <QSet>

#include <array>
#include <atomic>
#include <cstdio>
#include <thread>
#include <utility>
#include <vector>

namespace orvane::tests {

namespace {

constexpr int files = 1000;

/// Creates "N (Medium).png" for each N from the last to the first, and says N for each that wasn't there.
const char* const takeNames = R"(
set -o noclobber
for ((i = $2 - 1; i >= 0; --i)); do
    { printf theirs >"$1/$i (Medium).png"; } 2>/dev/null && echo "$i"
done
true
)";

/// The other program, from its first name on.
class NameTaker {
public:
    explicit NameTaker(const QString& folder)
    {
        const QString script = m_place.filePath(QStringLiteral("take-names"));
        QFile file(script);
        EXPECT_TRUE(file.open(QFile::WriteOnly) && file.write(takeNames) > 0 && file.flush());
        m_output = ::popen(
            qPrintable(QStringLiteral("bash '%1' '%2' %3").arg(script, folder, QString::number(files))), "r");
        takeLine();
        EXPECT_FALSE(m_taken.isEmpty());
    }
    ~NameTaker()
    {
        if (m_output)
            ::pclose(m_output);
    }
    NameTaker(const NameTaker&) = delete;
    NameTaker& operator=(const NameTaker&) = delete;

    /// Waits for its end, and returns the names that it took.
    QSet<QString> finish()
    {
        while (takeLine())
            continue;
        EXPECT_EQ(::pclose(std::exchange(m_output, nullptr)), 0);
        return m_taken;
    }

private:
    bool takeLine()
    {
        std::array<char, 16> line{};
        if (!m_output || !std::fgets(line.data(), line.size(), m_output))
            return false;
        m_taken.insert(QString::fromLatin1(line.data()).trimmed() + QStringLiteral(" (Medium).png"));
        return true;
    }

    QTemporaryDir m_place;
    QSet<QString> m_taken;
    std::FILE* m_output = nullptr;
};

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QFile::ReadOnly));
    return file.readAll();
}

class LargeBatchTest : public PicturesFixture {
protected:
    static QString name(int number) { return QStringLiteral("%1.png").arg(number); }

    void addPictures()
    {
        const QString first = addPicture(name(0));
        for (int i = 1; i < files; ++i)
            ASSERT_TRUE(QFile::copy(first, path(name(i))));
    }

    /// Resizes the pictures as the feature does, two at a time. Returns the new files by source.
    std::vector<QString> resizeAll(const std::function<void(int)>& done)
    {
        const ImageResizeEngine::Options options{{20, 20},
                                                 ImageResizeMath::Enlarging::no,
                                                 ResizeFormat::keepOriginal,
                                                 0.85,
                                                 QStringLiteral("Medium")};
        std::vector<QString> made(files);
        std::atomic<int> next = 0;
        const auto lane = [&] {
            for (int i = next++; i < files; i = next++) {
                made[static_cast<std::size_t>(i)] =
                    ImageResizeEngine::resize(pictures, path(name(i)), options, {}).value_or(QString());
                done(i);
            }
        };
        std::thread other(lane);
        lane();
        other.join();
        return made;
    }
};

} // namespace

TEST_F(LargeBatchTest, EachFileGetsOneCopyWhileAnotherProgramTakesNames)
{
    addPictures();
    std::optional<NameTaker> taker;
    const auto made = resizeAll([&](int number) {
        if (number == files / 10) // some copies have their names already
            taker.emplace(folder.path());
    });
    ASSERT_TRUE(taker);
    const QSet<QString> taken = taker->finish();

    int numbered = 0;
    QSet<QString> copies;
    for (int i = 0; i < files; ++i) {
        const QString copy = QFileInfo(made[static_cast<std::size_t>(i)]).fileName();
        const bool isPlain = copy == QStringLiteral("%1 (Medium).png").arg(i);
        EXPECT_TRUE(isPlain || copy == QStringLiteral("%1 (Medium) 2.png").arg(i)) << i;
        EXPECT_NE(isPlain, taken.contains(QStringLiteral("%1 (Medium).png").arg(i))) << i;
        EXPECT_TRUE(contentOf(path(copy)).startsWith("\x89PNG")) << i;
        numbered += isPlain ? 0 : 1;
        copies.insert(copy);
    }
    for (const QString& name : taken)
        EXPECT_EQ(contentOf(path(name)), "theirs") << name.toStdString();
    // None is missing, none is there twice, and nothing else is left.
    EXPECT_EQ(copies.size(), files);
    EXPECT_EQ(numbered, taken.size());
    EXPECT_EQ(names().size(), 2 * files + taken.size());
    RecordProperty("taken", static_cast<int>(taken.size()));
}

} // namespace orvane::tests
