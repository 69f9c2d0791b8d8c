#include "Fakes/FakePlatform.h"
#include "PlatformLinux/Files/XdgFileManager.h"

#include <QDir>
#include <QSet>

#include <gtest/gtest.h>

#include <memory>

namespace orvane::tests {

namespace {

struct Implementation {
    const char* name;
    std::unique_ptr<FileManager> (*make)();
};

} // namespace

class FileManagerContract : public ::testing::TestWithParam<Implementation> {
protected:
    const std::unique_ptr<FileManager> m_manager = GetParam().make();
};

INSTANTIATE_TEST_SUITE_P(Platforms, FileManagerContract,
                         ::testing::Values(Implementation{"Fake",
                                                          []() -> std::unique_ptr<FileManager> {
                                                              return std::make_unique<FakeFileManager>();
                                                          }},
                                           Implementation{"Linux",
                                                          []() -> std::unique_ptr<FileManager> {
                                                              return std::make_unique<XdgFileManager>();
                                                          }}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_P(FileManagerContract, AUserWithAHomeHasAFolderForApplicationSupport)
{
    EXPECT_FALSE(m_manager->applicationSupportDirectories().isEmpty());
}

TEST_P(FileManagerContract, ApplicationSupportFoldersAreCleanAbsolutePathsNamedOnce)
{
    const QStringList folders = m_manager->applicationSupportDirectories();
    for (const QString& folder : folders) {
        EXPECT_TRUE(QDir::isAbsolutePath(folder)) << folder.toStdString();
        EXPECT_EQ(QDir::cleanPath(folder), folder);
    }
    EXPECT_EQ(QSet<QString>(folders.begin(), folders.end()).size(), folders.size());
}

TEST_P(FileManagerContract, AnswersTheSameEachTime)
{
    EXPECT_EQ(m_manager->applicationSupportDirectories(), m_manager->applicationSupportDirectories());
}

} // namespace orvane::tests
