// The behaviour of the workspace that only a real desktop shows.
#include "Contract/LinuxWorkspaceFixture.h"

#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <unistd.h>

namespace orvane::tests {

namespace {

/// An environment variable, restored at the object's end.
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

using LinuxWorkspaceTest = LinuxWorkspaceFixture;

} // namespace

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
    /// Installs a program that records its arguments.
    void install(const char* program)
    {
        QFile script(m_bin.filePath(QLatin1StringView(program)));
        ASSERT_TRUE(script.open(QIODevice::WriteOnly));
        script.write("#!/bin/sh\necho \"$(basename \"$0\") $*\" >'" + record().toUtf8() + ".new'\n/bin/mv '" +
                     record().toUtf8() + ".new' '" + record().toUtf8() + "'\n");
        script.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    }

    [[nodiscard]] QString record() const { return m_home.filePath(u"record"_qs); }

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
