#include "Contract/Support/ForeignProgram.h"
#include "Contract/Support/ToolkitServer.h"
#include "Fakes/FakeLogSink.h"
#include "Fakes/FakeWorkspace.h"
#include "PlatformLinux/Session/LinuxWorkspace.h"
#include "PlatformLinux/Session/SingleInstance.h"
#include "Support/Eventually.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDir>
#include <QWidget>

#include <gmock/gmock.h>

#include <cstring>
#include <memory>
#include <utility>
#include <vector>

namespace orvane::tests {

namespace {

constexpr auto deadline = 15s;

const QString terminal = QStringLiteral("com.apple.Terminal");
const QString fileManager = QStringLiteral("com.apple.finder");
const QString ourselves = QStringLiteral("net.lindenrow.orvane");

/// A desktop on which a person works.
class Desk {
public:
    virtual ~Desk() = default;
    virtual Workspace& workspace() = 0;
    /// Each shows a window of that program, which comes to the front.
    virtual void showTerminal() = 0;
    virtual void showFileManager() = 0;
    virtual void showOurselves() = 0;
    /// Ends what showTerminal() started.
    virtual void endTerminal() = 0;
    /// Puts the machine to sleep, or wakes it.
    virtual void sleep() = 0;
    virtual void wake() = 0;
    /// Returns a program that can be started.
    virtual QString program() = 0;
    /// Waits until what was asked for has happened.
    virtual void settle() {}
};

class FakeDesk : public Desk {
public:
    Workspace& workspace() override { return m_workspace; }
    void showTerminal() override { m_workspace.activate(RunningApplication{11, terminal, u"Terminal"_qs}); }
    void showFileManager() override
    {
        m_workspace.activate(RunningApplication{12, fileManager, u"Files"_qs});
    }
    void showOurselves() override { m_workspace.activate(RunningApplication{13, ourselves, u"Orvane"_qs}); }
    void endTerminal() override { m_workspace.ended.append(11); }
    void sleep() override {}
    void wake() override { m_workspace.notificationCenter().post(Workspace::didWakeNotification()); }
    QString program() override { return u"/usr/bin/true"_qs; }

    void settle() override
    {
        for (const auto& opened : std::exchange(m_workspace.opened, {}))
            opened.completion(std::nullopt);
    }

private:
    FakeWorkspace m_workspace;
};

class LinuxDesk : public Desk {
public:
    ~LinuxDesk() override
    {
        m_window.reset();
        m_programs.clear();
        // The file manager goes on as a service of the desktop; only its windows belong to the test.
        if (m_fileManagerRan)
            closeWindowsOf("Thunar");
    }

    Workspace& workspace() override { return m_workspace; }

    void showTerminal() override
    {
        m_programs.push_back(std::make_unique<ForeignProgram>(
            u"xterm"_qs, QStringList{u"-fa"_qs, u"monospace"_qs, u"-e"_qs, u"cat"_qs}));
    }

    void showFileManager() override
    {
        m_fileManagerRan = true;
        m_programs.push_back(std::make_unique<ForeignProgram>(u"thunar"_qs, QStringList{QDir::homePath()}));
    }

    void showOurselves() override
    {
        m_window = std::make_unique<QWidget>();
        m_window->resize(200, 100);
        m_window->show();
        m_window->activateWindow();
    }

    void endTerminal() override { m_programs.clear(); }
    void sleep() override { tellOfSleep(true); }
    void wake() override { tellOfSleep(false); }
    QString program() override { return u"/usr/bin/true"_qs; }

private:
    static void closeWindowsOf(const QByteArray& windowClass)
    {
        const ToolkitServer x = *ToolkitServer::ofApplication();
        const QByteArray list = x.property(x.root(), x.atom("_NET_CLIENT_LIST"), XCB_ATOM_WINDOW);
        for (qsizetype at = 0; at + 4 <= list.size(); at += 4) {
            xcb_client_message_event_t request = {};
            std::memcpy(&request.window, list.constData() + at, sizeof request.window);
            if (!x.property(request.window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING).contains(windowClass))
                continue;
            request.response_type = XCB_CLIENT_MESSAGE;
            request.format = 32;
            request.type = x.atom("_NET_CLOSE_WINDOW");
            xcb_send_event(x.xcb(), 0, x.root(), XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                           reinterpret_cast<const char*>(&request));
        }
        xcb_flush(x.xcb());
    }

    static void tellOfSleep(bool goingToSleep)
    {
        auto call =
            QDBusMessage::createMethodCall(u"org.freedesktop.login1"_qs, u"/org/freedesktop/login1"_qs,
                                           u"org.freedesktop.DBus.Mock"_qs, u"EmitSignal"_qs);
        call << u"org.freedesktop.login1.Manager"_qs << u"PrepareForSleep"_qs << u"b"_qs
             << QVariant(QVariantList{goingToSleep});
        const QDBusMessage answer = QDBusConnection::systemBus().call(call, QDBus::Block, 5000);
        ASSERT_EQ(answer.type(), QDBusMessage::ReplyMessage) << qPrintable(answer.errorMessage());
    }

    FakeLogSink m_log;
    SingleInstance m_singleInstance{m_log};
    LinuxWorkspace m_workspace{m_log, m_singleInstance};
    std::vector<std::unique_ptr<ForeignProgram>> m_programs;
    std::unique_ptr<QWidget> m_window;
    bool m_fileManagerRan = false;
};

struct Implementation {
    const char* name;
    std::unique_ptr<Desk> (*make)();
};

} // namespace

class WorkspaceContract : public ::testing::TestWithParam<Implementation> {
protected:
    WorkspaceContract()
    {
        const auto listen = [this](const QString& name) {
            m_tokens.push_back(workspace().notificationCenter().addObserver(
                name, [this](const Notification& notification) { m_heard.append(notification.name); }));
        };
        listen(Workspace::didWakeNotification());
        m_tokens.push_back(workspace().notificationCenter().addObserver(
            Workspace::didActivateApplicationNotification(), [this](const Notification& notification) {
                const QVariant told = notification.userInfo.value(Workspace::applicationKey());
                m_activated.push_back(told.isValid() ? std::optional(told.value<RunningApplication>())
                                                     : std::nullopt);
            }));
    }

    Workspace& workspace() { return m_desk->workspace(); }

    bool comesToFront(const QString& identifier)
    {
        return eventually(deadline, [&] {
            const auto frontmost = workspace().frontmostApplication();
            return frontmost && frontmost->bundleIdentifier == identifier;
        });
    }

    std::unique_ptr<Desk> m_desk = GetParam().make();
    std::vector<std::unique_ptr<NotificationCenter::Token>> m_tokens;
    QStringList m_heard;
    std::vector<std::optional<RunningApplication>> m_activated;
};

INSTANTIATE_TEST_SUITE_P(
    Platforms, WorkspaceContract,
    ::testing::Values(
        Implementation{"Fake", []() -> std::unique_ptr<Desk> { return std::make_unique<FakeDesk>(); }},
        Implementation{"Linux", []() -> std::unique_ptr<Desk> { return std::make_unique<LinuxDesk>(); }}),
    [](const auto& test) { return std::string(test.param.name); });

TEST_P(WorkspaceContract, TheFrontmostApplicationIsTheOneThatWasShownLast)
{
    m_desk->showTerminal();
    EXPECT_TRUE(comesToFront(terminal));
    m_desk->showFileManager();
    EXPECT_TRUE(comesToFront(fileManager));
    m_desk->showOurselves();
    EXPECT_TRUE(comesToFront(ourselves));
}

TEST_P(WorkspaceContract, AnActivationIsPostedWithTheApplication)
{
    m_desk->showTerminal();
    ASSERT_TRUE(comesToFront(terminal));
    ASSERT_FALSE(m_activated.empty());
    EXPECT_EQ(m_activated.back(), workspace().frontmostApplication());
    EXPECT_GT(m_activated.back()->processIdentifier, 0);
    EXPECT_FALSE(m_activated.back()->localizedName.isEmpty());
}

TEST_P(WorkspaceContract, WhatIsPostedIsFrontmostAlready)
{
    std::optional<RunningApplication> frontmost;
    const auto token = workspace().notificationCenter().addObserver(
        Workspace::didActivateApplicationNotification(),
        [&](const Notification&) { frontmost = workspace().frontmostApplication(); });
    m_desk->showTerminal();
    ASSERT_TRUE(comesToFront(terminal));
    EXPECT_EQ(frontmost, m_activated.back());
}

TEST_P(WorkspaceContract, AnActivatedApplicationComesToTheFront)
{
    m_desk->showTerminal();
    ASSERT_TRUE(comesToFront(terminal));
    const RunningApplication first = *workspace().frontmostApplication();
    m_desk->showFileManager();
    ASSERT_TRUE(comesToFront(fileManager));
    EXPECT_TRUE(workspace().activateApplication(first));
    EXPECT_TRUE(comesToFront(terminal));
    EXPECT_EQ(workspace().frontmostApplication(), first);
}

TEST_P(WorkspaceContract, AnApplicationThatHasEndedIsNotActivated)
{
    m_desk->showTerminal();
    ASSERT_TRUE(comesToFront(terminal));
    const RunningApplication ended = *workspace().frontmostApplication();
    m_desk->showOurselves();
    ASSERT_TRUE(comesToFront(ourselves));
    m_desk->endTerminal();
    EXPECT_TRUE(eventually(deadline, [&] { return !workspace().activateApplication(ended); }));
    EXPECT_TRUE(comesToFront(ourselves));
}

TEST_P(WorkspaceContract, WakingIsPostedAndGoingToSleepIsNot)
{
    m_desk->sleep();
    m_desk->wake();
    EXPECT_TRUE(eventually(deadline, [this] { return !m_heard.isEmpty(); }));
    EXPECT_EQ(m_heard, QStringList{Workspace::didWakeNotification()});
}

TEST_P(WorkspaceContract, OpeningAProgramIsAnsweredLaterAndOnce)
{
    int answers = 0;
    std::optional<QString> error;
    workspace().openApplication(m_desk->program(), {}, [&](std::optional<QString> told) {
        ++answers;
        error = std::move(told);
    });
    EXPECT_EQ(answers, 0);
    m_desk->settle();
    EXPECT_TRUE(eventually(deadline, [&] { return answers > 0; }));
    EXPECT_EQ(answers, 1);
    EXPECT_EQ(error, std::nullopt);
}

} // namespace orvane::tests
