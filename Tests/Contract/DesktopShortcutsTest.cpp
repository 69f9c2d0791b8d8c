#include "PlatformLinux/Shortcuts/DesktopShortcuts.h"
#include "Contract/HotKeysSupport.h"
#include "Desktop/Support/OtherClient.h"
#include "Fakes/FakeLogSink.h"
#include "PlatformLinux/HotKeys/X11HotKeys.h"
#include "PlatformLinux/Keys/ServerKeymap.h"
#include "PlatformLinux/Shortcuts/KdeShortcuts.h"
#include "Support/Eventually.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QWidget>

#include <gtest/gtest.h>

#include <cstdio>

namespace orvane::tests {
namespace {

// Virtual key codes.
constexpr int keyF4 = 118, keyF12 = 111, keyT = 17, keyEscape = 53;
constexpr int option = carbonModifier::option, control = carbonModifier::control,
              command = carbonModifier::command;

void callXfconf(const QString& method, const QVariantList& arguments)
{
    auto call = QDBusMessage::createMethodCall(u"org.xfce.Xfconf"_qs, u"/org/xfce/Xfconf"_qs,
                                               u"org.xfce.Xfconf"_qs, method);
    call.setArguments(arguments);
    const auto reply = QDBusConnection::sessionBus().call(call, QDBus::Block, 5000);
    ASSERT_EQ(reply.type(), QDBusMessage::ReplyMessage) << reply.errorMessage().toStdString();
}

/// Sets a shortcut in the desktop's settings for a scope.
class XfceShortcut {
public:
    explicit XfceShortcut(const QString& property, const QVariant& value) : m_property(property)
    {
        callXfconf(u"SetProperty"_qs, {channel(), property, QVariant::fromValue(QDBusVariant(value))});
    }
    ~XfceShortcut() { callXfconf(u"ResetProperty"_qs, {channel(), m_property, false}); }
    XfceShortcut(const XfceShortcut&) = delete;
    XfceShortcut& operator=(const XfceShortcut&) = delete;

private:
    static QString channel() { return u"xfce4-keyboard-shortcuts"_qs; }

    QString m_property;
};

void setGSetting(const QStringList& arguments)
{
    ASSERT_EQ(QProcess::execute(u"gsettings"_qs, arguments), 0);
}

} // namespace

class DesktopShortcutsTest : public ::testing::Test {
protected:
    void runOn(const QString& desktop)
    {
        shortcuts = std::make_unique<DesktopShortcuts>(keymap, QStringList{desktop});
    }
    bool has(int virtualKeyCode, int modifiers)
    {
        return shortcuts->shortcuts().contains({virtualKeyCode, modifiers});
    }
    bool comesToHave(int virtualKeyCode, int modifiers)
    {
        return eventually(10s, [&] { return has(virtualKeyCode, modifiers); });
    }

    ServerKeymap keymap;
    std::unique_ptr<DesktopShortcuts> shortcuts;
};

TEST_F(DesktopShortcutsTest, TheFirstQuestionIsAnsweredAtOnceWithWhatIsKnown)
{
    runOn(u"XFCE"_qs);
    EXPECT_TRUE(shortcuts->shortcuts().isEmpty());
    EXPECT_TRUE(eventually(10s, [&] { return !shortcuts->shortcuts().isEmpty(); }));
}

TEST_F(DesktopShortcutsTest, XfcesWindowManagerHasShortcuts)
{
    runOn(u"XFCE"_qs);
    EXPECT_TRUE(comesToHave(keyF4, option)) << "<Alt>F4 closes a window";
    EXPECT_FALSE(has(keyEscape, 0)) << "only while a window is being moved";
}

TEST_F(DesktopShortcutsTest, XfcesCommandsHaveShortcuts)
{
    runOn(u"XFCE"_qs);
    EXPECT_TRUE(comesToHave(keyT, control | option)) << "<Primary><Alt>t opens a terminal";
}

TEST_F(DesktopShortcutsTest, AShortcutOfPrintScreenIsKnown)
{
    constexpr int keyPrint = 0x1000 + 107;
    runOn(u"XFCE"_qs);
    const XfceShortcut screenshot(u"/commands/custom/<Shift>Print"_qs, u"true"_qs);
    EXPECT_TRUE(comesToHave(keyPrint, carbonModifier::shift));
}

TEST_F(DesktopShortcutsTest, ChangesOfXfcesShortcutsAreFollowed)
{
    runOn(u"XFCE"_qs);
    ASSERT_TRUE(comesToHave(keyF4, option));
    {
        const XfceShortcut own(u"/commands/custom/<Super>F12"_qs, u"xterm"_qs);
        const XfceShortcut custom(u"/commands/custom/override"_qs, true);
        EXPECT_TRUE(comesToHave(keyF12, command));
        EXPECT_FALSE(has(keyT, control | option)) << "the user's own list stands in place of the default one";
    }
    EXPECT_TRUE(eventually(10s, [&] { return !has(keyF12, command); }));
    EXPECT_TRUE(comesToHave(keyT, control | option));
}

TEST_F(DesktopShortcutsTest, TheyArriveAsSymbolicHotKeys)
{
    runOn(u"XFCE"_qs);
    FakeLogSink log;
    X11HotKeys hotKeys(log, *shortcuts);
    const QVariantMap closing{{u"kHISymbolicHotKeyEnabled"_qs, true},
                              {u"kHISymbolicHotKeyCode"_qs, keyF4},
                              {u"kHISymbolicHotKeyModifiers"_qs, option}};
    EXPECT_TRUE(eventually(10s, [&] {
        const auto copied = hotKeys.copySymbolicHotKeys();
        return copied.status == noErr && copied.array.toList().contains(closing);
    }));
}

TEST_F(DesktopShortcutsTest, ChangesOfGnomesShortcutsAreFollowed)
{
    const QStringList setting{u"org.gnome.desktop.wm.keybindings"_qs, u"toggle-fullscreen"_qs};
    runOn(u"GNOME"_qs);
    EXPECT_TRUE(comesToHave(keyF4, option)) << "<Alt>F4 closes a window";
    EXPECT_FALSE(has(keyF12, command));
    setGSetting(QStringList{u"set"_qs} + setting + QStringList{u"['<Super>F12']"_qs});
    EXPECT_TRUE(comesToHave(keyF12, command));
    setGSetting(QStringList{u"reset"_qs} + setting);
    EXPECT_TRUE(eventually(10s, [&] { return !has(keyF12, command); }));
}

TEST_F(DesktopShortcutsTest, ReadingBeginsWithTheFirstActiveWindow)
{
    runOn(u"XFCE"_qs);
    int answers = 0;
    QObject::connect(shortcuts.get(), &DesktopShortcuts::changed, shortcuts.get(), [&] { ++answers; });
    QWidget window;
    window.setWindowTitle(u"to be activated"_qs);
    window.show();
    OtherClient panel;
    EXPECT_TRUE(eventually(10s, [&] { return panel.activate("to be activated") && answers > 0; }));
}

TEST_F(DesktopShortcutsTest, OnAnUnknownDesktopThereAreNone)
{
    runOn(u"Nothing"_qs);
    EXPECT_TRUE(shortcuts->shortcuts().isEmpty());
}

/// Schemas of desktops that aren't installed here, under the names that they have there.
class ForeignSchemasTest : public DesktopShortcutsTest {
protected:
    ForeignSchemasTest()
    {
        QFile file(m_directory.filePath(u"test.gschema.xml"_qs));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(schemas);
        file.close();
        EXPECT_EQ(QProcess::execute(u"glib-compile-schemas"_qs, {m_directory.path()}), 0);
        qputenv("GSETTINGS_SCHEMA_DIR", m_directory.path().toLocal8Bit());
    }
    ~ForeignSchemasTest() override { qunsetenv("GSETTINGS_SCHEMA_DIR"); }

private:
    static constexpr const char* schemas = R"(<schemalist>
  <schema id="org.gnome.settings-daemon.plugins.media-keys"
          path="/org/gnome/settings-daemon/plugins/media-keys/">
    <key name="terminal" type="as"><default>['&lt;Primary&gt;&lt;Alt&gt;t']</default></key>
    <key name="custom-keybindings" type="as"><default>[]</default></key>
  </schema>
  <schema id="org.gnome.settings-daemon.plugins.media-keys.custom-keybinding">
    <key name="name" type="s"><default>''</default></key>
    <key name="binding" type="s"><default>''</default></key>
  </schema>
  <schema id="org.cinnamon.desktop.keybindings" path="/org/cinnamon/desktop/keybindings/">
    <key name="custom-list" type="as"><default>['__dummy__']</default></key>
  </schema>
  <schema id="org.cinnamon.desktop.keybindings.custom-keybinding">
    <key name="binding" type="as"><default>[]</default></key>
  </schema>
  <schema id="org.mate.Marco.window-keybindings" path="/org/mate/marco/window-keybindings/">
    <key name="close" type="s"><default>'&lt;Alt&gt;F4'</default></key>
    <key name="raise" type="s"><default>'disabled'</default></key>
  </schema>
</schemalist>)";

    QTemporaryDir m_directory;
};

TEST_F(ForeignSchemasTest, AShortcutThatAUserOfGnomeMadeHimselfIsKnown)
{
    const QString mediaKeys = u"org.gnome.settings-daemon.plugins.media-keys"_qs;
    const QString path = u"/org/gnome/settings-daemon/plugins/media-keys/custom-keybindings/custom0/"_qs;
    runOn(u"GNOME"_qs);
    EXPECT_TRUE(comesToHave(keyT, control | option));
    EXPECT_FALSE(has(keyF12, option));
    setGSetting({u"set"_qs, mediaKeys + u".custom-keybinding:"_qs + path, u"binding"_qs, u"<Alt>F12"_qs});
    setGSetting({u"set"_qs, mediaKeys, u"custom-keybindings"_qs, u"['"_qs + path + u"']"_qs});
    EXPECT_TRUE(comesToHave(keyF12, option));
    setGSetting({u"reset"_qs, mediaKeys, u"custom-keybindings"_qs});
    EXPECT_TRUE(eventually(10s, [&] { return !has(keyF12, option); }));
}

TEST_F(ForeignSchemasTest, AShortcutThatAUserOfCinnamonMadeHimselfIsKnown)
{
    const QString keybindings = u"org.cinnamon.desktop.keybindings"_qs;
    runOn(u"X-Cinnamon"_qs);
    setGSetting(
        {u"set"_qs,
         keybindings + u".custom-keybinding:/org/cinnamon/desktop/keybindings/custom-keybindings/custom0/"_qs,
         u"binding"_qs, u"['<Alt>F12']"_qs});
    setGSetting({u"set"_qs, keybindings, u"custom-list"_qs, u"['custom0', '__dummy__']"_qs});
    EXPECT_TRUE(comesToHave(keyF12, option));
    setGSetting({u"reset"_qs, keybindings, u"custom-list"_qs});
}

TEST_F(ForeignSchemasTest, MatesShortcutsAreKnown)
{
    runOn(u"MATE"_qs);
    EXPECT_TRUE(comesToHave(keyF4, option));
}

TEST(KdeShortcutsTest, ItsFileIsFollowedThoughItIsReplaced)
{
    const QTemporaryDir directory;
    const QString path = directory.filePath(u"kglobalshortcutsrc"_qs);
    const auto write = [&](const char* shortcut) {
        QFile file(path + u".new"_qs);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QByteArray("[kwin]\nWindow Close=") + shortcut + ",none,Close\n");
        file.close();
        EXPECT_EQ(std::rename(qPrintable(file.fileName()), qPrintable(path)), 0);
    };
    write("Alt+F4");
    KdeShortcuts source(path);
    source.start(nullptr);
    EXPECT_EQ(source.accelerators(), QList{*parseKdeAccelerator(u"Alt+F4")});
    for (const char* shortcut : {"Meta+Q", "Meta+W"}) {
        write(shortcut);
        const QList expected{*parseKdeAccelerator(QString::fromLatin1(shortcut))};
        EXPECT_TRUE(eventually(10s, [&] { return source.accelerators() == expected; })) << shortcut;
    }
}

} // namespace orvane::tests
