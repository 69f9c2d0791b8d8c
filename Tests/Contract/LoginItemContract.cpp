#include "Fakes/FakeLoginItem.h"
#include "PlatformLinux/Files/AutostartLoginItem.h"
#include "PlatformLinux/Files/ProgramBundle.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

namespace orvane::tests {

namespace {

class Subject {
public:
    virtual ~Subject() = default;
    virtual LoginItem& item() = 0;
    /// Makes the system refuse registrations from now on.
    virtual void refuse() = 0;
};

class FakeSubject : public Subject {
public:
    LoginItem& item() override { return m_item; }
    void refuse() override { m_item.refusal = QStringLiteral("Refused."); }

private:
    FakeLoginItem m_item;
};

class LinuxSubject : public Subject {
public:
    LoginItem& item() override { return m_item; }
    void refuse() override
    {
        // A link to a path that can't exist makes even the superuser fail.
        const QString autostart = m_directory.filePath(QStringLiteral("autostart"));
        QDir().rmdir(autostart);
        QFile::link(QStringLiteral("/proc/self/nowhere/at/all"), autostart);
    }

private:
    QTemporaryDir m_directory;
    AutostartLoginItem m_item{
        XdgDirectories{m_directory.path(), m_directory.path()}, ProgramBundle().path(), {}};
};

struct Implementation {
    const char* name;
    std::unique_ptr<Subject> (*make)();
};

} // namespace

class LoginItemContract : public ::testing::TestWithParam<Implementation> {
protected:
    LoginItem& item() { return m_subject->item(); }

    std::unique_ptr<Subject> m_subject = GetParam().make();
};

INSTANTIATE_TEST_SUITE_P(Platforms, LoginItemContract,
                         ::testing::Values(Implementation{"Fake",
                                                          []() -> std::unique_ptr<Subject> {
                                                              return std::make_unique<FakeSubject>();
                                                          }},
                                           Implementation{"Linux",
                                                          []() -> std::unique_ptr<Subject> {
                                                              return std::make_unique<LinuxSubject>();
                                                          }}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_P(LoginItemContract, IsNotRegisteredAtFirst)
{
    EXPECT_EQ(item().status(), LoginItem::Status::notRegistered);
}

TEST_P(LoginItemContract, RegisteringEnablesIt)
{
    item().registerItem();
    EXPECT_EQ(item().status(), LoginItem::Status::enabled);
}

TEST_P(LoginItemContract, RegisteringTwiceIsAsOnce)
{
    item().registerItem();
    item().registerItem();
    EXPECT_EQ(item().status(), LoginItem::Status::enabled);
    item().unregisterItem();
    EXPECT_EQ(item().status(), LoginItem::Status::notRegistered);
}

TEST_P(LoginItemContract, UnregisteringWhatIsNotRegisteredIsFine)
{
    item().unregisterItem();
    EXPECT_EQ(item().status(), LoginItem::Status::notRegistered);
}

TEST_P(LoginItemContract, CanBeRegisteredAgainAfterwards)
{
    item().registerItem();
    item().unregisterItem();
    item().registerItem();
    EXPECT_EQ(item().status(), LoginItem::Status::enabled);
}

TEST_P(LoginItemContract, ARefusedRegistrationThrowsWithATextAndChangesNothing)
{
    m_subject->refuse();
    try {
        item().registerItem();
        FAIL() << "no error";
    } catch (const PlatformError& error) {
        EXPECT_STRNE(error.what(), "");
    }
    EXPECT_EQ(item().status(), LoginItem::Status::notRegistered);
}

} // namespace orvane::tests
