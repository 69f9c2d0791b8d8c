#include "Contract/Support/PrivateBus.h"
#include "Desktop/Support/WindowManagersWord.h"
#include "Fakes/FakeLogSink.h"
#include "Fakes/FakePermissions.h"
#include "Platform/NotificationCenter.h"
#include "PlatformLinux/Session/LinuxPermissions.h"
#include "Support/Eventually.h"

#include <gmock/gmock.h>

#include <memory>

namespace orvane::tests {

namespace {

constexpr auto deadline = 10s;
const QString fileManager = QStringLiteral("com.apple.finder");

/// A system that grants everything. Abilities of it go and come again, as a window manager and a file manager
/// do; they are back at the object's end.
class Subject {
public:
    virtual ~Subject() = default;
    virtual Permissions& permissions() = 0;
    virtual void takeAccessibilityAway() = 0;
    virtual void bringAccessibility() = 0;
    virtual void takeFileManagerAway() = 0;
    virtual void bringFileManager() = 0;
    /// Returns how often a change was announced so far.
    [[nodiscard]] int changes() const { return m_changes; }

protected:
    NotificationCenter m_center;

private:
    int m_changes = 0;
    std::unique_ptr<NotificationCenter::Token> m_observer = m_center.addObserver(
        Permissions::didChangeNotification(), [this](const Notification&) { ++m_changes; });
};

class FakeSubject : public Subject {
public:
    FakeSubject()
    {
        m_permissions.accessibility = m_permissions.inputMonitoring = m_permissions.screenRecording = true;
        m_permissions.automation = Permissions::noErr;
    }

    Permissions& permissions() override { return m_permissions; }
    void takeAccessibilityAway() override { m_permissions.change(&FakePermissions::accessibility, false); }
    void bringAccessibility() override { m_permissions.change(&FakePermissions::accessibility, true); }
    void takeFileManagerAway() override { m_permissions.changeAutomation(Permissions::procNotFound); }
    void bringFileManager() override { m_permissions.changeAutomation(Permissions::noErr); }

private:
    FakePermissions m_permissions{&m_center};
};

/// The file manager is a name on a bus without others, so that it can go.
class LinuxSubject : public Subject {
public:
    LinuxSubject() { bringFileManager(); }
    Permissions& permissions() override { return m_permissions; }
    void takeAccessibilityAway() override { m_windowManager.remove(); }
    void bringAccessibility() override { m_windowManager.restore(); }
    void takeFileManagerAway() override { m_fileManager.unregisterService(name()); }
    void bringFileManager() override { EXPECT_TRUE(m_fileManager.registerService(name())); }

private:
    static QString name() { return QStringLiteral("org.freedesktop.FileManager1"); }

    PrivateBus m_bus;
    QDBusConnection m_fileManager = m_bus.connection();
    FakeLogSink m_log;
    WindowManagersWord m_windowManager;
    LinuxPermissions m_permissions{m_log, m_center, SessionKind::x11, m_bus.connection()};
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

TEST_P(PermissionsContract, AccessibilityThatGoesAndComesIsAnnouncedEachTime)
{
    ASSERT_TRUE(permissions().axIsProcessTrusted());
    EXPECT_EQ(m_subject->changes(), 0);
    m_subject->takeAccessibilityAway();
    EXPECT_TRUE(eventually(deadline, [this] { return m_subject->changes() == 1; }));
    EXPECT_FALSE(permissions().axIsProcessTrusted());
    m_subject->bringAccessibility();
    EXPECT_TRUE(eventually(deadline, [this] { return m_subject->changes() == 2; }));
    EXPECT_TRUE(permissions().axIsProcessTrusted());
}

TEST_P(PermissionsContract, AccessibilityThatWasMissingFromTheFirstIsAnnouncedWhenItComes)
{
    m_subject->takeAccessibilityAway();
    ASSERT_FALSE(permissions().axIsProcessTrusted());
    permissions().axIsProcessTrustedWithPrompt();
    m_subject->bringAccessibility();
    EXPECT_TRUE(eventually(deadline, [this] { return permissions().axIsProcessTrusted(); }));
    EXPECT_GE(m_subject->changes(), 1);
}

TEST_P(PermissionsContract, AFileManagerThatGoesAndComesIsAnnounced)
{
    const auto status = [this] {
        return permissions().determinePermissionToAutomateTarget(fileManager, Permissions::Prompt::no);
    };
    ASSERT_EQ(status(), Permissions::noErr);
    m_subject->takeFileManagerAway();
    EXPECT_TRUE(eventually(deadline, [this] { return m_subject->changes() == 1; }));
    EXPECT_EQ(status(), Permissions::procNotFound);
    m_subject->bringFileManager();
    EXPECT_TRUE(eventually(deadline, [this] { return m_subject->changes() == 2; }));
    EXPECT_EQ(status(), Permissions::noErr);
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
