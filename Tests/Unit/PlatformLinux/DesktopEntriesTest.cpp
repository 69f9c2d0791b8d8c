#include "PlatformLinux/Applications/DesktopEntries.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <filesystem>

namespace orvane::tests {

class DesktopEntriesTest : public ::testing::Test {
protected:
    DesktopEntriesTest()
    {
        for (const char* directory : {"user/applications", "system/applications", "bin"})
            QDir().mkpath(m_home.filePath(QLatin1StringView(directory)));
    }

    void write(const char* file, const QString& text)
    {
        QFile target(m_home.filePath(QLatin1StringView(file)));
        QDir().mkpath(QFileInfo(target).path());
        ASSERT_TRUE(target.open(QIODevice::WriteOnly));
        target.write("[Desktop Entry]\nType=Application\n" + text.toUtf8());
    }

    void writeSystem(const char* name, const QString& text)
    {
        write(QByteArray("system/applications/" + QByteArray(name)).constData(), text);
    }

    DesktopEntries entries()
    {
        return DesktopEntries({.directories = {m_home.filePath(QStringLiteral("user/applications")),
                                               m_home.filePath(QStringLiteral("system/applications"))},
                               .currentDesktops = {QStringLiteral("XFCE")},
                               .locales = {QStringLiteral("de_AT"), QStringLiteral("de")},
                               .searchPath = {m_home.filePath(QStringLiteral("bin"))}});
    }

    QStringList idsForMenus()
    {
        QStringList ids;
        for (const auto& entry : entries().entriesForMenus())
            ids.append(entry.id);
        return ids;
    }

    /// Sets a directory's time: two changes within one tick of the clock would look like one.
    void touch(const char* directory)
    {
        const std::filesystem::path path = m_home.filePath(QLatin1StringView(directory)).toStdString();
        std::filesystem::last_write_time(path,
                                         std::filesystem::last_write_time(path) + std::chrono::seconds(2));
    }

    QString idForWindow(const char* windowClass, const char* instance = "")
    {
        const auto found =
            entries().entryForWindow(QString::fromLatin1(windowClass), QString::fromLatin1(instance));
        return found ? found->id : QString();
    }

    QTemporaryDir m_home;
};

TEST_F(DesktopEntriesTest, ThePiecesOfTheDesktopAreToldFromTheProgramsByTheirCategories)
{
    writeSystem("panel.desktop", QStringLiteral("Name=Panel\nCategories=GTK;Settings;DesktopSettings;\n"));
    writeSystem("saver.desktop", QStringLiteral("Name=Saver\nCategories=Screensaver;\n"));
    writeSystem("mixer.desktop", QStringLiteral("Name=Mixer\nCategories=AudioVideo;Settings;\n"));
    writeSystem("plain.desktop", QStringLiteral("Name=Plain\n"));
    QStringList parts;
    for (const auto& entry : entries().entriesForMenus()) {
        if (entry.isPartOfDesktop)
            parts.append(entry.id);
    }
    EXPECT_EQ(parts, (QStringList{QStringLiteral("panel"), QStringLiteral("saver")}));
}

TEST_F(DesktopEntriesTest, AnEntryGivesItsNameAndIcon)
{
    writeSystem("one.desktop", u"Name=One\nIcon=one-icon\nExec=one"_qs);
    const auto entry = entries().entry(u"one"_qs);
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->name, u"One"_qs);
    EXPECT_EQ(entry->iconName, u"one-icon"_qs);
}

TEST_F(DesktopEntriesTest, TheNameIsInTheUsersLanguage)
{
    writeSystem("both.desktop", u"Name=Files\nName[de]=Dateien\nName[de_AT]=Ordner\nName[fr]=Fichiers"_qs);
    writeSystem("language.desktop", u"Name=Files\nName[de]=Dateien"_qs);
    writeSystem("other.desktop", u"Name=Files\nName[fr]=Fichiers"_qs);
    auto subject = entries();
    EXPECT_EQ(subject.entry(u"both"_qs)->name, u"Ordner"_qs);
    EXPECT_EQ(subject.entry(u"language"_qs)->name, u"Dateien"_qs);
    EXPECT_EQ(subject.entry(u"other"_qs)->name, u"Files"_qs);
}

TEST_F(DesktopEntriesTest, KeysOfOtherGroupsAreNotTheEntrys)
{
    writeSystem("one.desktop", u"Name=One\n[Desktop Action new]\nName=New\nName[de]=Neu\nIcon=new\n"_qs);
    const auto entry = entries().entry(u"one"_qs);
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->name, u"One"_qs);
    EXPECT_EQ(entry->iconName, QString());
}

TEST_F(DesktopEntriesTest, TheUsersEntryShadowsTheSystemsOne)
{
    writeSystem("one.desktop", u"Name=Theirs"_qs);
    write("user/applications/one.desktop", u"Name=Mine"_qs);
    EXPECT_EQ(entries().entry(u"one"_qs)->name, u"Mine"_qs);
    EXPECT_EQ(idsForMenus(), QStringList{u"one"_qs});
}

TEST_F(DesktopEntriesTest, AHiddenEntryOfTheUsersRemovesTheSystemsOne)
{
    writeSystem("one.desktop", u"Name=Theirs\nStartupWMClass=One"_qs);
    write("user/applications/one.desktop", u"Name=Mine\nHidden=true"_qs);
    EXPECT_FALSE(entries().entry(u"one"_qs));
    EXPECT_EQ(idForWindow("One"), QString());
}

TEST_F(DesktopEntriesTest, WhatIsNotForThisDesktopsMenusIsNotToChooseFrom)
{
    writeSystem("shown.desktop", u"Name=Shown"_qs);
    writeSystem("here.desktop", u"Name=Here\nOnlyShowIn=GNOME;XFCE;"_qs);
    writeSystem("elsewhere.desktop", u"Name=Elsewhere\nOnlyShowIn=KDE;"_qs);
    writeSystem("nothere.desktop", u"Name=NotHere\nNotShowIn=XFCE;"_qs);
    writeSystem("quiet.desktop", u"Name=Quiet\nNoDisplay=true"_qs);
    writeSystem("inside.desktop", u"Name=Inside\nTerminal=true"_qs);
    writeSystem("link.desktop", u"Name=Link\nType=Link"_qs);
    EXPECT_EQ(idsForMenus(), (QStringList{u"here"_qs, u"shown"_qs}));
}

TEST_F(DesktopEntriesTest, WhatIsNotForMenusStillTellsWhoseAWindowIs)
{
    writeSystem("quiet.desktop", u"Name=Quiet\nNoDisplay=true"_qs);
    EXPECT_EQ(idForWindow("Quiet"), u"quiet"_qs);
}

TEST_F(DesktopEntriesTest, AProgramToTryHasToBeThere)
{
    writeSystem("absent.desktop", u"Name=Absent\nTryExec=absent-program"_qs);
    writeSystem("present.desktop", u"Name=Present\nTryExec=present-program"_qs);
    QFile program(m_home.filePath(u"bin/present-program"_qs));
    ASSERT_TRUE(program.open(QIODevice::WriteOnly));
    program.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    EXPECT_EQ(idsForMenus(), QStringList{u"present"_qs});
}

TEST_F(DesktopEntriesTest, ProgramsToChooseFromAreSortedByName)
{
    writeSystem("1.desktop", u"Name=zebra"_qs);
    writeSystem("2.desktop", u"Name=Ant"_qs);
    writeSystem("3.desktop", u"Name=bee"_qs);
    EXPECT_EQ(idsForMenus(), (QStringList{u"2"_qs, u"3"_qs, u"1"_qs}));
}

TEST_F(DesktopEntriesTest, AnEntryInAFolderHasTheFolderInItsId)
{
    writeSystem("kde/tool.desktop", u"Name=Tool"_qs);
    EXPECT_EQ(idsForMenus(), QStringList{u"kde-tool"_qs});
}

TEST_F(DesktopEntriesTest, ALinkThatLeadsBackUpIsNotFollowedForEver)
{
    writeSystem("one.desktop", u"Name=One"_qs);
    ASSERT_TRUE(QFile::link(m_home.filePath(u"system/applications"_qs),
                            m_home.filePath(u"system/applications/again"_qs)));
    EXPECT_EQ(idsForMenus(), QStringList{u"one"_qs});
}

TEST_F(DesktopEntriesTest, TheClassThatAnEntryNamesGoesBeforeAnIdLikeTheClass)
{
    writeSystem("editor.desktop", u"Name=Other"_qs);
    writeSystem("com.maker.editor2.desktop", u"Name=Right\nStartupWMClass=Editor"_qs);
    EXPECT_EQ(idForWindow("Editor"), u"com.maker.editor2"_qs);
}

TEST_F(DesktopEntriesTest, OfTwoWithOneClassTheOneForMenusIsMeant)
{
    writeSystem("a-url-handler.desktop", u"Name=Handler\nNoDisplay=true\nStartupWMClass=Code"_qs);
    writeSystem("code.desktop", u"Name=Code\nStartupWMClass=Code"_qs);
    EXPECT_EQ(idForWindow("Code"), u"code"_qs);
}

TEST_F(DesktopEntriesTest, AWindowIsMatchedByItsIdWhateverTheCase)
{
    writeSystem("thunar.desktop", u"Name=Thunar"_qs);
    EXPECT_EQ(idForWindow("Thunar"), u"thunar"_qs);
}

TEST_F(DesktopEntriesTest, AWindowIsMatchedByTheLastPartOfAReversedName)
{
    writeSystem("org.gnome.Nautilus.desktop", u"Name=Files"_qs);
    EXPECT_EQ(idForWindow("nautilus"), u"org.gnome.Nautilus"_qs);
    EXPECT_EQ(idForWindow("gnome"), QString());
}

TEST_F(DesktopEntriesTest, ASpaceInAClassIsAHyphenInAnId)
{
    writeSystem("some-tool.desktop", u"Name=Tool"_qs);
    EXPECT_EQ(idForWindow("Some Tool"), u"some-tool"_qs);
}

TEST_F(DesktopEntriesTest, TheInstanceTellsWhereTheClassDoesNot)
{
    writeSystem("writer.desktop", u"Name=Writer"_qs);
    EXPECT_EQ(idForWindow("Soffice", "writer"), u"writer"_qs);
}

TEST_F(DesktopEntriesTest, AWindowWithoutAClassIsNobodys)
{
    writeSystem("one.desktop", u"Name=One"_qs); // this one has no StartupWMClass either
    EXPECT_EQ(idForWindow("", ""), QString());
    EXPECT_EQ(idForWindow("Unheard"), QString());
}

TEST_F(DesktopEntriesTest, AProgramInstalledLaterIsFound)
{
    auto subject = entries();
    EXPECT_FALSE(subject.entry(u"late"_qs));
    writeSystem("late.desktop", u"Name=Late"_qs);
    touch("system/applications");
    EXPECT_TRUE(subject.entry(u"late"_qs));
    QFile::remove(m_home.filePath(u"system/applications/late.desktop"_qs));
    touch("system/applications");
    EXPECT_FALSE(subject.entry(u"late"_qs));
}

TEST_F(DesktopEntriesTest, ADirectoryThatIsMadeLaterIsFound)
{
    QDir(m_home.filePath(u"user/applications"_qs)).removeRecursively();
    auto subject = entries();
    EXPECT_FALSE(subject.entry(u"late"_qs));
    write("user/applications/late.desktop", u"Name=Late"_qs);
    EXPECT_TRUE(subject.entry(u"late"_qs));
}

TEST_F(DesktopEntriesTest, FilesAreNotReadAgainWhileNoDirectoryHasChanged)
{
    writeSystem("one.desktop", u"Name=Before"_qs);
    auto subject = entries();
    EXPECT_EQ(subject.entry(u"one"_qs)->name, u"Before"_qs);
    writeSystem("one.desktop", u"Name=After"_qs); // written in place: the directory doesn't change
    EXPECT_EQ(subject.entry(u"one"_qs)->name, u"Before"_qs);
}

TEST_F(DesktopEntriesTest, AFileThatIsNoEntryIsPassedOver)
{
    QFile broken(m_home.filePath(u"system/applications/broken.desktop"_qs));
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
    broken.write("\xff\xfe\x00 garbage", 11);
    broken.close();
    writeSystem("one.desktop", u"Name=One"_qs);
    EXPECT_EQ(idsForMenus(), QStringList{u"one"_qs});
}

TEST_F(DesktopEntriesTest, SpaceBeforeAGroupAndAByteOrderMarkAreNoPartOfIt)
{
    const auto writeWhole = [&](const QString& file, const QByteArray& bytes) {
        QFile target(m_home.filePath(file));
        ASSERT_TRUE(target.open(QIODevice::WriteOnly));
        target.write(bytes);
    };
    writeWhole(u"system/applications/indented.desktop"_qs,
               "  [Desktop Entry]\nType=Application\nName=Indented\n\t[Desktop Action New]\nName=Other\n");
    writeWhole(u"system/applications/marked.desktop"_qs,
               "\xEF\xBB\xBF[Desktop Entry]\nType=Application\nName=Marked\n");
    const auto indented = entries().entry(u"indented"_qs);
    ASSERT_TRUE(indented);
    EXPECT_EQ(indented->name, u"Indented"_qs);
    const auto marked = entries().entry(u"marked"_qs);
    ASSERT_TRUE(marked);
    EXPECT_EQ(marked->name, u"Marked"_qs);
}

} // namespace orvane::tests
