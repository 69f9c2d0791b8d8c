#include "PlatformLinux/Worker/NewFile.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace orvane::tests {

namespace {

class NewFileTest : public ::testing::TestWithParam<NewFile::Way> {
protected:
    [[nodiscard]] std::optional<NewFile> make() const
    {
        auto file = NewFile::in(folder.path(), GetParam());
        EXPECT_TRUE(file);
        EXPECT_EQ(::write(file->descriptor(), "new", 3), 3);
        return file;
    }
    [[nodiscard]] QString name(int index) const { return folder.filePath(QString::number(index)); }
    [[nodiscard]] QStringList names() const
    {
        return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    QTemporaryDir folder;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Ways, NewFileTest, ::testing::Values(NewFile::Way::best, NewFile::Way::named));

TEST_P(NewFileTest, TakesTheFirstFreeName)
{
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(make()->publish([this](int index) { return name(index); }), name(i));
    EXPECT_EQ(names(), (QStringList{QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("2")}));
}

TEST_P(NewFileTest, WithoutANameNothingIsLeft)
{
    make().reset();
    EXPECT_TRUE(names().isEmpty());
}

TEST_P(NewFileTest, WithoutTheFolderThereIsNoFile)
{
    EXPECT_FALSE(NewFile::in(folder.filePath(QStringLiteral("none")), GetParam()));
    EXPECT_FALSE(make()->publish([this](int) { return folder.filePath(QStringLiteral("none/a")); }));
    EXPECT_TRUE(names().isEmpty());
}

TEST(NewFileOnAnotherDiskTest, AFileThatCanNotBeLinkedIsCopied)
{
    // No link leads from one file system to another.
    const QTemporaryDir there(QStringLiteral("/dev/shm/orvane-XXXXXX"));
    const QTemporaryDir here;
    struct stat one {};
    struct stat other {};
    ASSERT_EQ(::stat(QFile::encodeName(there.path()).constData(), &one), 0);
    ASSERT_EQ(::stat(QFile::encodeName(here.path()).constData(), &other), 0);
    if (one.st_dev == other.st_dev)
        GTEST_SKIP() << "one file system for both folders";
    const QByteArray content(300'000, 'x');
    const auto make = [&] {
        auto file = NewFile::in(there.path());
        EXPECT_TRUE(file);
        EXPECT_EQ(::write(file->descriptor(), content.constData(), content.size()), content.size());
        return file;
    };
    const auto name = [&here](int index) { return here.filePath(QString::number(index)); };
    EXPECT_EQ(make()->publish(name), name(0));
    EXPECT_EQ(make()->publish(name), name(1));
    EXPECT_EQ(QDir(here.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name),
              (QStringList{QStringLiteral("0"), QStringLiteral("1")}));
    for (const int index : {0, 1}) {
        QFile file(name(index));
        ASSERT_TRUE(file.open(QFile::ReadOnly));
        EXPECT_EQ(file.readAll(), content);
    }
}

} // namespace orvane::tests
