#include "Fakes/FakeLogSink.h"
#include "Fakes/FakePermissions.h"
#include "PlatformLinux/Session/LinuxPermissions.h"
#include "Support/Eventually.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>

#include <gmock/gmock.h>

#include <memory>

namespace orvane::tests {

namespace {

constexpr auto deadline = 10s;
const QString fileManager = QStringLiteral("com.apple.finder");

/// A system that grants everything, except accessibility when it was taken away.
class Subject {
public:
    virtual ~Subject() = default;
    virtual Permissions& permissions() = 0;
    virtual void takeAccessibilityAway() = 0;
};

class FakeSubject : public Subject {
public:
    FakeSubject()
    {
        m_permissions.accessibility = m_permissions.inputMonitoring = m_permissions.screenRecording = true;
        m_permissions.automation = Permissions::noErr;
        m_permissions.userAnswer = [this] { m_permissions.accessibility = true; };
    }

    Permissions& permissions() override { return m_permissions; }
    void takeAccessibilityAway() override { m_permissions.accessibility = false; }

private:
    FakePermissions m_permissions;
};

class LinuxSubject : public Subject {
public:
    ~LinuxSubject() override { setAccessibilityBus(true); }
    Permissions& permissions() override { return m_permissions; }
    void takeAccessibilityAway() override { setAccessibilityBus(false); }

private:
    static void setAccessibilityBus(bool enabled)
    {
        auto call = QDBusMessage::createMethodCall(u"org.a11y.Bus"_qs, u"/org/a11y/bus"_qs,
                                                   u"org.freedesktop.DBus.Properties"_qs, u"Set"_qs);
        call << u"org.a11y.Status"_qs << u"IsEnabled"_qs << QVariant::fromValue(QDBusVariant(enabled));
        const auto answer = QDBusConnection::sessionBus().call(call, QDBus::Block, 5000);
        EXPECT_EQ(answer.type(), QDBusMessage::ReplyMessage) << qPrintable(answer.errorMessage());
    }

    FakeLogSink m_log;
    LinuxPermissions m_permissions{m_log};
};

struct Implementation {
    const char* name;
    std::unique_ptr<Subject> (*make)();
};

} // namespace

class PermissionsContract : public ::testing::TestWithParam<Implementation> {
protected:
    Permissions& permissions() { return m_subject->permissions(); }

    std::unique_ptr<Subject> m_subject = GetParam().make();
};

INSTANTIATE_TEST_SUITE_P(Platforms, PermissionsContract,
                         ::testing::Values(Implementation{"Fake",
                                                          []() -> std::unique_ptr<Subject> {
                                                              return std::make_unique<FakeSubject>();
                                                          }},
                                           Implementation{"Linux",
                                                          []() -> std::unique_ptr<Subject> {
                                                              return std::make_unique<LinuxSubject>();
                                                          }}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_P(PermissionsContract, TheFirstReadTellsWhatIsGranted)
{
    EXPECT_TRUE(permissions().axIsProcessTrusted());
    EXPECT_TRUE(permissions().preflightListenEventAccess());
    EXPECT_TRUE(permissions().preflightScreenCaptureAccess());
    EXPECT_EQ(permissions().determinePermissionToAutomateTarget(fileManager, Permissions::Prompt::no),
              Permissions::noErr);
}

TEST_P(PermissionsContract, TheFirstReadTellsThatAccessibilityIsDenied)
{
    m_subject->takeAccessibilityAway();
    EXPECT_FALSE(permissions().axIsProcessTrusted());
}

TEST_P(PermissionsContract, AccessibilityThatIsTakenAwayReadsAsDenied)
{
    ASSERT_TRUE(permissions().axIsProcessTrusted());
    m_subject->takeAccessibilityAway();
    EXPECT_TRUE(eventually(deadline, [this] { return !permissions().axIsProcessTrusted(); }));
}

TEST_P(PermissionsContract, AskingForAccessibilityLeadsToItsGrant)
{
    m_subject->takeAccessibilityAway();
    ASSERT_TRUE(eventually(deadline, [this] { return !permissions().axIsProcessTrusted(); }));
    permissions().axIsProcessTrustedWithPrompt();
    EXPECT_TRUE(eventually(deadline, [this] { return permissions().axIsProcessTrusted(); }));
}

TEST_P(PermissionsContract, AskingForWhatIsGrantedLeavesItGranted)
{
    permissions().requestListenEventAccess();
    permissions().requestScreenCaptureAccess();
    EXPECT_TRUE(permissions().preflightListenEventAccess());
    EXPECT_TRUE(permissions().preflightScreenCaptureAccess());
}

TEST_P(PermissionsContract, TheFileManagerCanBeAutomatedAfterAPromptToo)
{
    EXPECT_EQ(permissions().determinePermissionToAutomateTarget(fileManager, Permissions::Prompt::yes),
              Permissions::noErr);
    EXPECT_EQ(permissions().determinePermissionToAutomateTarget(fileManager, Permissions::Prompt::no),
              Permissions::noErr);
}

} // namespace orvane::tests
