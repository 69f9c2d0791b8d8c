// The recorder's texts in more than one language, and shortcuts in words.
#include "KeyboardShortcuts/Recorder/RecorderStrings.h"
#include "Fakes/FakePlatform.h"
#include "KeyboardShortcuts/Recorder/RecorderSpeech.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

namespace {

using namespace orvane;
using namespace orvane::KeyboardShortcuts;

const QStringList keys = {
    QStringLiteral("record_shortcut"),
    QStringLiteral("press_shortcut"),
    QStringLiteral("keyboard_shortcut_used_by_menu_item"),
    QStringLiteral("keyboard_shortcut_used_by_system"),
    QStringLiteral("keyboard_shortcuts_can_be_changed"),
};

ResourceBundle bundle(const char* languages)
{
    return ResourceBundle(QString::fromLatin1(languages).split(u',', Qt::SkipEmptyParts));
}

QJsonObject table(const char* language)
{
    bundle(""); // loads the tables
    QFile file(QStringLiteral(":/strings/KeyboardShortcuts/%1.json").arg(QLatin1String(language)));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << language;
    return QJsonDocument::fromJson(file.readAll()).object();
}

TEST(ResourceBundle, HasEveryTextInEnglishAndInGerman)
{
    const ResourceBundle english = bundle("en");
    const ResourceBundle german = bundle("de");
    for (const QString& key : keys) {
        EXPECT_NE(english.localizedString(key), key);
        EXPECT_NE(german.localizedString(key), key);
        EXPECT_NE(english.localizedString(key), german.localizedString(key)) << key.toStdString();
    }
}

TEST(ResourceBundle, TheTablesHaveTheSameKeysAndPlacesForValues)
{
    const QJsonObject english = table("en");
    const QJsonObject german = table("de");
    EXPECT_EQ(english.keys(), german.keys());
    EXPECT_GE(english.size(), keys.size());
    for (const QString& key : english.keys()) {
        EXPECT_EQ(english[key].toString().count(QStringLiteral("%1")),
                  german[key].toString().count(QStringLiteral("%1")))
            << key.toStdString();
        EXPECT_FALSE(german[key].toString().isEmpty()) << key.toStdString();
    }
}

TEST(ResourceBundle, OneTextNamesTheMenuItem)
{
    const QString key = QStringLiteral("keyboard_shortcut_used_by_menu_item");
    for (const char* language : {"en", "de"})
        EXPECT_EQ(bundle(language).localizedString(key).count(QStringLiteral("%1")), 1) << language;
}

TEST(ResourceBundle, TakesTheFirstLanguageThatItHas)
{
    const QString key = QStringLiteral("alert_dismiss");
    const QString record = QStringLiteral("record_shortcut");
    EXPECT_EQ(bundle("fr-FR,de-AT,en").localizedString(record), bundle("de").localizedString(record));
    EXPECT_EQ(bundle("en-GB,de").localizedString(record), bundle("en").localizedString(record));
    EXPECT_NE(bundle("fr").localizedString(key), key) << "English stands in";
}

TEST(ResourceBundle, IsEnglishWhereTheDesktopHasNoLanguage)
{
    const QString record = QStringLiteral("record_shortcut");
    EXPECT_EQ(bundle("C").localizedString(record), bundle("en").localizedString(record));
    EXPECT_EQ(bundle("").localizedString(record), bundle("en").localizedString(record));
    EXPECT_EQ(orvaneResourceBundle().localizedString(record), bundle("en").localizedString(record));
}

TEST(ResourceBundle, AnUnknownKeyReadsAsItself)
{
    EXPECT_EQ(bundle("en").localizedString(QStringLiteral("no_such_key")), QStringLiteral("no_such_key"));
}

class RecorderSpeechTest : public ::testing::Test {
protected:
    FakePlatform fake;

    static QString said(Key key, EventFlags flags, const char* language = "en")
    {
        return spokenDescription(Shortcut(key, flags), bundle(language));
    }
};

TEST_F(RecorderSpeechTest, SaysModifiersInTheOrderInWhichTheyAreWritten)
{
    EXPECT_EQ(
        said(Key::space, eventFlag::command | eventFlag::shift | eventFlag::option | eventFlag::control),
        QStringLiteral("Control Option Shift Command Space"));
    EXPECT_EQ(said(Key::k, eventFlag::command), QStringLiteral("Command K"));
    EXPECT_EQ(said(Key::f5, 0), QStringLiteral("F5"));
}

TEST_F(RecorderSpeechTest, HasAWordForEachKeyThatIsWrittenAsASymbol)
{
    EXPECT_EQ(said(Key::leftArrow, eventFlag::control), QStringLiteral("Control Left"));
    EXPECT_EQ(said(Key::delete_, eventFlag::command), QStringLiteral("Command Delete"));
    for (const Key key : {Key::return_, Key::delete_, Key::deleteForward, Key::end, Key::escape, Key::help,
                          Key::home, Key::space, Key::tab, Key::pageUp, Key::pageDown, Key::upArrow,
                          Key::rightArrow, Key::downArrow, Key::leftArrow}) {
        for (const QChar character : said(key, 0))
            EXPECT_TRUE(character.unicode() < 128) << rawValue(key);
    }
}

TEST_F(RecorderSpeechTest, TellsTheKeypadFromTheOtherDigits)
{
    EXPECT_EQ(said(Key::keypad7, eventFlag::option), QStringLiteral("Option Keypad 7"));
    EXPECT_EQ(said(Key::seven, eventFlag::option), QStringLiteral("Option 7"));
    EXPECT_EQ(said(Key::keypadEnter, 0), QStringLiteral("Keypad Enter"));
    EXPECT_EQ(said(Key::keypadClear, 0), QStringLiteral("Keypad Clear"));
    EXPECT_EQ(said(Key::keypadPlus, 0), QStringLiteral("Keypad +"));
}

TEST_F(RecorderSpeechTest, SaysTheNameOfAKeyThatTheSystemCallsOtherwise)
{
    EXPECT_EQ(said(Key::help, eventFlag::control), QStringLiteral("Control Help"));
    fake.inputSources.names = {{rawValue(Key::help), QStringLiteral("Insert")},
                               {0x107F, QStringLiteral("Pause")}};
    EXPECT_EQ(said(Key::help, eventFlag::control), QStringLiteral("Control Insert"));
    EXPECT_EQ(said(Key{0x107F}, 0), QStringLiteral("Pause"));
}

TEST_F(RecorderSpeechTest, GivesTheCodeOfAKeyThatPrintsNothing)
{
    EXPECT_EQ(said(Key{200}, eventFlag::control), QStringLiteral("Control Key 200"));
}

TEST_F(RecorderSpeechTest, SpeaksGerman)
{
    EXPECT_EQ(said(Key::space, eventFlag::control | eventFlag::shift, "de"),
              QStringLiteral("Steuerung Umschalt Leertaste"));
    EXPECT_EQ(said(Key::keypad7, eventFlag::option, "de"), QStringLiteral("Wahltaste Ziffernblock 7"));
}

} // namespace
