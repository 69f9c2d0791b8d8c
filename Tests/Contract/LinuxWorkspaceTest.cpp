// What only a real desktop does to the workspace.
#include "PlatformLinux/Session/LinuxWorkspace.h"
#include "Contract/Support/ForeignProgram.h"
#include "Fakes/FakeLogSink.h"
#include "PlatformLinux/Session/SingleInstance.h"
#include "PlatformLinux/X11/X11Connection.h"
#include "Support/Eventually.h"

#include <QAbstractNativeEventFilter>
#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QWidget>

#include <gmock/gmock.h>

#include <cstring>
#include <memory>
#include <vector>

#include <unistd.h>

namespace orvane::tests {

namespace {

constexpr auto deadline = 15s;
const QString none = QStringLiteral("none");

/// An environment variable, put back at the end.
class Variable {
public:
    Variable(const char* name, const QByteArray& value) : m_name(name), m_before(qgetenv(name))
    {
        qputenv(name, value);
    }
    ~Variable() { qputenv(m_name, m_before); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* m_name;
    QByteArray m_before;
};

/// Makes a change on the root window that concerns nobody, and hears when the server tells of it: what was
/// changed before has been looked at by then.
class Mark : private QAbstractNativeEventFilter {
public:
    Mark() { qApp->installNativeEventFilter(this); }
    ~Mark() override { qApp->removeNativeEventFilter(this); }

    void make()
    {
        m_isHeard = false;
        xcb_change_property(m_x.xcb(), XCB_PROP_MODE_REPLACE, m_x.root(), m_name, XCB_ATOM_CARDINAL, 32, 0,
                            nullptr);
        xcb_flush(m_x.xcb());
    }

    bool isHeard() const { return m_isHeard; }

private:
    bool nativeEventFilter(const QByteArray&, void* message, qintptr*) override
    {
        const auto* told = static_cast<const xcb_property_notify_event_t*>(message);
        if ((told->response_type & 0x7f) == XCB_PROPERTY_NOTIFY && told->atom == m_name)
            m_isHeard = true;
        return false;
    }

    X11Connection m_x = *X11Connection::ofApplication();
    xcb_atom_t m_name = m_x.atom("_ORVANE_TEST_MARK");
    bool m_isHeard = false;
};

} // namespace

class LinuxWorkspaceTest : public ::testing::Test {
protected:
    LinuxWorkspaceTest()
    {
        m_token = m_workspace.notificationCenter().addObserver(
            Workspace::didActivateApplicationNotification(), [this](const Notification& notification) {
                const QVariant told = notification.userInfo.value(Workspace::applicationKey());
                m_activated.append(
                    told.isValid()
                        ? told.value<RunningApplication>().bundleIdentifier.value_or(QStringLiteral("absent"))
                        : none);
            });
    }

    bool isFrontmost(const QString& identifier)
    {
        const auto frontmost = m_workspace.frontmostApplication();
        return frontmost && frontmost->bundleIdentifier == identifier;
    }

    xcb_window_t activeWindow()
    {
        const QByteArray bytes = m_x->property(m_x->root(), m_x->atom("_NET_ACTIVE_WINDOW"), XCB_ATOM_WINDOW);
        xcb_window_t window = XCB_WINDOW_NONE;
        if (bytes.size() >= 4)
            std::memcpy(&window, bytes.constData(), sizeof window);
        return window;
    }

    /// As the window manager does; it writes again only when the focus moves.
    void tellActive(xcb_window_t window)
    {
        xcb_change_property(m_x->xcb(), XCB_PROP_MODE_REPLACE, m_x->root(), m_x->atom("_NET_ACTIVE_WINDOW"),
                            XCB_ATOM_WINDOW, 32, 1, &window);
        xcb_flush(m_x->xcb());
    }

    /// Up to the moment at which the workspace has looked.
    void tellActiveAndLetLook(xcb_window_t window)
    {
        tellActive(window);
        m_mark.make();
        EXPECT_TRUE(eventually(deadline, [this] { return m_mark.isHeard(); }));
    }

    xcb_window_t windowOfTerminal()
    {
        m_programs.push_back(std::make_unique<ForeignProgram>(
            u"xterm"_qs, QStringList{u"-fa"_qs, u"monospace"_qs, u"-e"_qs, u"cat"_qs}));
        const qint64 pid = m_programs.back()->pid();
        EXPECT_TRUE(eventually(deadline, [&] {
            const auto frontmost = m_workspace.frontmostApplication();
            return frontmost && frontmost->processIdentifier == pid;
        }));
        return activeWindow();
    }

    xcb_window_t ownWindow()
    {
        m_own = std::make_unique<QWidget>();
        m_own->resize(200, 100);
        m_own->show();
        m_own->activateWindow();
        const auto id = static_cast<xcb_window_t>(m_own->winId());
        EXPECT_TRUE(eventually(deadline, [&] { return activeWindow() == id; }));
        EXPECT_TRUE(eventually(deadline, [&] { return isFrontmost(u"net.lindenrow.orvane"_qs); }));
        return id;
    }

    FakeLogSink m_log;
    SingleInstance m_singleInstance{m_log};
    LinuxWorkspace m_workspace{m_log, m_singleInstance};
    std::optional<X11Connection> m_x = X11Connection::ofApplication();
    Mark m_mark;
    std::vector<std::unique_ptr<ForeignProgram>> m_programs;
    std::unique_ptr<QWidget> m_own;
    std::unique_ptr<NotificationCenter::Token> m_token;
    QStringList m_activated;
};

TEST_F(LinuxWorkspaceTest, TheProcessOfTheFrontmostApplicationIsThatOfItsWindow)
{
    windowOfTerminal();
    EXPECT_EQ(m_workspace.frontmostApplication()->processIdentifier, m_programs[0]->pid());
    ownWindow();
    EXPECT_EQ(m_workspace.frontmostApplication()->processIdentifier, ::getpid());
}

TEST_F(LinuxWorkspaceTest, TheCommandKeysAreThoseOfTheFrontmostApplication)
{
    windowOfTerminal();
    EXPECT_EQ(m_workspace.commandKeys(), CommandKeys::controlShift);
    ownWindow();
    EXPECT_EQ(m_workspace.commandKeys(), CommandKeys::control);
}

TEST_F(LinuxWorkspaceTest, PassingThroughNoneAndRepeatsPostNothing)
{
    const xcb_window_t terminal = windowOfTerminal();
    const xcb_window_t own = ownWindow();
    m_activated.clear();
    for (const xcb_window_t told :
         {xcb_window_t{XCB_WINDOW_NONE}, own, own, xcb_window_t{XCB_WINDOW_NONE}, own})
        tellActiveAndLetLook(told);
    tellActive(terminal);
    EXPECT_TRUE(eventually(deadline, [&] { return isFrontmost(u"com.apple.Terminal"_qs); }));
    EXPECT_EQ(m_activated, QStringList{u"com.apple.Terminal"_qs});
}

TEST_F(LinuxWorkspaceTest, AnotherWindowOfTheSameApplicationPostsNothing)
{
    const xcb_window_t terminal = windowOfTerminal();
    const xcb_window_t first = ownWindow();
    QWidget second;
    second.resize(100, 100);
    second.show();
    second.activateWindow();
    const auto id = static_cast<xcb_window_t>(second.winId());
    ASSERT_TRUE(eventually(deadline, [&] { return activeWindow() == id; }));
    m_activated.clear();
    tellActiveAndLetLook(first);
    tellActiveAndLetLook(id);
    tellActive(terminal);
    EXPECT_TRUE(eventually(deadline, [&] { return !m_activated.isEmpty(); }));
    EXPECT_EQ(m_activated, QStringList{u"com.apple.Terminal"_qs});
}

TEST_F(LinuxWorkspaceTest, NoneThatStaysIsPostedWithoutAnApplication)
{
    const xcb_window_t own = ownWindow();
    m_activated.clear();
    tellActive(XCB_WINDOW_NONE);
    EXPECT_TRUE(eventually(deadline, [&] { return !m_workspace.frontmostApplication(); }));
    EXPECT_EQ(m_activated, QStringList{none});
    EXPECT_EQ(m_workspace.commandKeys(), CommandKeys::control);
    tellActive(own);
    EXPECT_TRUE(eventually(deadline, [&] { return isFrontmost(u"net.lindenrow.orvane"_qs); }));
}

TEST_F(LinuxWorkspaceTest, AWindowThatIsGoneBeforeItIsLookedAtIsAsNone)
{
    const xcb_window_t terminal = windowOfTerminal();
    ownWindow();
    m_activated.clear();
    const xcb_window_t gone = xcb_generate_id(m_x->xcb());
    tellActiveAndLetLook(gone);
    tellActive(terminal);
    EXPECT_TRUE(eventually(deadline, [&] { return isFrontmost(u"com.apple.Terminal"_qs); }));
    EXPECT_EQ(m_activated, QStringList{u"com.apple.Terminal"_qs});
    tellActive(gone);
    EXPECT_TRUE(eventually(deadline, [&] { return !m_workspace.frontmostApplication(); }));
}

TEST_F(LinuxWorkspaceTest, TheProgramsOfTheDesktopCanBeChosenFrom)
{
    const auto installed = m_workspace.installedApplications();
    QStringList identifiers;
    QStringList names;
    for (const auto& application : installed) {
        identifiers.append(application.bundleIdentifier.value_or(QString()));
        names.append(application.localizedName);
    }
    EXPECT_TRUE(identifiers.contains(u"com.apple.finder"_qs));
    EXPECT_TRUE(identifiers.contains(u"com.apple.Terminal"_qs));
    EXPECT_FALSE(names.contains(QString()));
    EXPECT_FALSE(identifiers.contains(u"com.apple.dock"_qs)) << "it never is where a person types";
    EXPECT_FALSE(names.contains(u"Panel"_qs)) << "nor are the desktop's own settings";
}

class OpeningOfURLs : public LinuxWorkspaceTest {
protected:
    /// A program that writes down its arguments.
    void install(const char* program)
    {
        QFile script(m_bin.filePath(QLatin1StringView(program)));
        ASSERT_TRUE(script.open(QIODevice::WriteOnly));
        script.write("#!/bin/sh\necho \"$(basename \"$0\") $*\" >'" + record().toUtf8() + ".new'\n/bin/mv '" +
                     record().toUtf8() + ".new' '" + record().toUtf8() + "'\n");
        script.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    }

    QString record() const { return m_home.filePath(u"record"_qs); }

    QByteArray opened()
    {
        EXPECT_TRUE(eventually(deadline, [this] { return QFile::exists(record()); }));
        QFile file(record());
        return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed() : QByteArray();
    }

    QTemporaryDir m_home;
    QTemporaryDir m_bin;
    Variable m_path{"PATH", QFile::encodeName(m_bin.path())};
    const QString m_page =
        u"x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"_qs;
};

TEST_F(OpeningOfURLs, APageOfTheSettingsIsShownByTheDesktopsOwnProgram)
{
    QFile::link(u"/usr/bin/basename"_qs, m_bin.filePath(u"basename"_qs));
    install("xfce4-accessibility-settings");
    install("xfce4-settings-manager");
    EXPECT_TRUE(m_workspace.openURL(m_page));
    EXPECT_EQ(opened(), "xfce4-accessibility-settings");
}

TEST_F(OpeningOfURLs, WithoutAProgramForThePageTheFrontPageIsShown)
{
    QFile::link(u"/usr/bin/basename"_qs, m_bin.filePath(u"basename"_qs));
    install("xfce4-settings-manager");
    EXPECT_TRUE(m_workspace.openURL(m_page));
    EXPECT_EQ(opened(), "xfce4-settings-manager");
}

TEST_F(OpeningOfURLs, WithoutAnySettingsProgramItFailsAndSaysWhy)
{
    EXPECT_FALSE(m_workspace.openURL(m_page));
    ASSERT_EQ(m_log.messages().size(), 1);
    EXPECT_TRUE(m_log.messages()[0].contains(u"xfce4-accessibility-settings is not installed"_qs));
}

TEST_F(OpeningOfURLs, OtherURLsGoToTheDesktopsOpener)
{
    QFile::link(u"/usr/bin/basename"_qs, m_bin.filePath(u"basename"_qs));
    install("xdg-open");
    EXPECT_TRUE(m_workspace.openURL(u"https://example.org/a?b=c"_qs));
    EXPECT_EQ(opened(), "xdg-open https://example.org/a?b=c");
}

TEST_F(OpeningOfURLs, WhatIsNoURLIsNotOpened)
{
    install("xdg-open");
    EXPECT_FALSE(m_workspace.openURL(QString()));
    EXPECT_FALSE(m_workspace.openURL(u"no scheme"_qs));
    EXPECT_FALSE(m_workspace.openURL(u"https://exa mple"_qs));
}

TEST_F(OpeningOfURLs, AProgramThatIsNotThereFailsWithItsPath)
{
    std::optional<QString> error;
    bool isAnswered = false;
    m_workspace.openApplication(u"/nowhere/program"_qs, {}, [&](std::optional<QString> told) {
        isAnswered = true;
        error = std::move(told);
    });
    EXPECT_TRUE(eventually(deadline, [&] { return isAnswered; }));
    ASSERT_TRUE(error);
    EXPECT_TRUE(error->contains(u"/nowhere/program"_qs));
}

} // namespace orvane::tests
