#include "PlatformLinux/Worker/NewFile.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

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

} // namespace orvane::tests
