// The catalogues against the texts of the sources, and the words that a person gets to read with them.
#include "PlatformLinux/Language/Catalogues.h"
#include "Fakes/FakePlatform.h"
#include "KeyboardShortcuts/Recorder/RecorderSpeech.h"
#include "KeyboardShortcuts/Shortcut/Shortcut.h"
#include "Unit/Translations/TextCatalogue.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <algorithm>
#include <optional>

#include <gtest/gtest.h>

namespace {

using namespace orvane;
using KeyboardShortcuts::Key;
using KeyboardShortcuts::Shortcut;

class CataloguesTest : public ::testing::Test {
protected:
    static QString inCatalogues(const char* name)
    {
        return QStringLiteral(CATALOGUES_FOLDER "/") + QLatin1StringView(name);
    }

    const TextCatalogue sources = readCatalogue(QStringLiteral(SOURCE_TEXTS));
    const TextCatalogue english = readCatalogue(inCatalogues("orvane_en_linux.ts"));
    const TextCatalogue german = readCatalogue(inCatalogues("orvane_de.ts"));

    /// Returns the texts that can be shown: those of the catalogue, or the source where it has none.
    static QStringList shown(const TextKey& key, const TextCatalogue& catalogue)
    {
        const QStringList texts = catalogue.value(key).translations;
        return texts.isEmpty() ? QStringList{key.source} : texts;
    }
};

/// Names and signs of things that this desktop doesn't have.
const QRegularExpression& foreignName()
{
    static const QRegularExpression expression(
        QStringLiteral(
            "\\b(Mac|Macs|macOS|OS X|MacVim|Apple|Finder|System (Settings|Preferences)|Dock|Cmd|Command|"
            "Option|Caffeine|Mission Control|Trackpad|Force Touch)\\b|coffee|"
            "[Mm]enu[ -][Bb]ar|[⌃⌥⇧⌘⌫⌦⎋⏎↩⇥⇞⇟↖↘]|\u20DD|\u20E3"),
        QRegularExpression::UseUnicodePropertiesOption);
    return expression;
}

/// The order of the modifiers is written in their signs and not shown itself.
bool isShown(const TextKey& key)
{
    return key.source != QStringLiteral("⌃⌥⇧⌘");
}

QStringList placeholders(const QString& text)
{
    static const QRegularExpression expression(QStringLiteral("%L?(\\d+|n)"));
    QStringList found;
    for (const QRegularExpressionMatch& match : expression.globalMatch(text))
        found.append(match.captured());
    found.sort();
    return found;
}

qsizetype mnemonics(const QString& text)
{
    static const QRegularExpression expression(QStringLiteral("&[^\\s&]"));
    return text.count(expression);
}

TEST_F(CataloguesTest, TheSourcesHaveTexts)
{
    EXPECT_GT(sources.size(), 250);
    EXPECT_TRUE(sources.contains({QStringLiteral("AwakeText"), QStringLiteral("Keep Awake"), {}}));
    EXPECT_TRUE(sources.contains({QStringLiteral("AwakeText"), QStringLiteral("30 minutes"), {}}))
        << "TextSource isn't seen by lupdate";
}

TEST_F(CataloguesTest, NothingThatIsShownNamesAThingOfAnotherSystem)
{
    for (const TextKey& key : sources.keys()) {
        if (!isShown(key))
            continue;
        for (const QString& text : shown(key, english) + shown(key, german)) {
            const QRegularExpressionMatch match = foreignName().match(text);
            EXPECT_FALSE(match.hasMatch())
                << key.text() << "\nis shown as: " << text.toStdString() << "\nand names "
                << match.captured().toStdString() << "; word it otherwise in Resources/translations";
        }
    }
}

TEST_F(CataloguesTest, GermanHasEveryText)
{
    for (const TextKey& key : sources.keys()) {
        ASSERT_TRUE(german.contains(key)) << key.text() << "\nrun \"ninja translations\" and translate it";
        const CatalogueText text = german.value(key);
        EXPECT_TRUE(text.isFinished && !text.translations.isEmpty()) << key.text() << "\nisn't translated";
        for (const QString& form : text.translations)
            EXPECT_FALSE(form.trimmed().isEmpty()) << key.text();
    }
}

TEST_F(CataloguesTest, NoCatalogueHasATextThatIsInNoSource)
{
    for (const TextCatalogue* catalogue : {&english, &german}) {
        for (const TextKey& key : catalogue->keys())
            EXPECT_TRUE(sources.contains(key)) << key.text() << "\nis left over: run \"ninja translations\"";
    }
}

TEST_F(CataloguesTest, NoPlaceholderAndNoMnemonicIsLost)
{
    for (const TextCatalogue* catalogue : {&english, &german}) {
        for (auto entry = catalogue->begin(); entry != catalogue->end(); ++entry) {
            for (const QString& text : entry.value().translations) {
                EXPECT_EQ(placeholders(entry.key().source), placeholders(text)) << entry.key().text();
                EXPECT_EQ(mnemonics(entry.key().source), mnemonics(text)) << entry.key().text();
                EXPECT_EQ(entry.key().source.endsWith(u'…'), text.endsWith(u'…')) << entry.key().text();
                EXPECT_EQ(entry.key().source.endsWith(u' '), text.endsWith(u' ')) << entry.key().text();
            }
        }
    }
}

TEST_F(CataloguesTest, TheOrderOfTheModifiersHasEachOfThemOnce)
{
    const TextKey key{QStringLiteral("KeyText"), QStringLiteral("⌃⌥⇧⌘"),
                      QStringLiteral("These four in the order in which a shortcut is written")};
    ASSERT_TRUE(sources.contains(key));
    for (const TextCatalogue* catalogue : {&english, &german}) {
        QString order = shown(key, *catalogue).constFirst();
        QString wanted = key.source;
        std::sort(order.begin(), order.end());
        std::sort(wanted.begin(), wanted.end());
        EXPECT_EQ(order, wanted);
    }
}

TEST(CatalogueFor, TakesTheFirstWantedLanguageThatThereIs)
{
    const auto of = [](const char* languages) {
        return catalogueFor(QString::fromLatin1(languages).split(u',', Qt::SkipEmptyParts));
    };
    const QString english = QStringLiteral("orvane_en_linux");
    const QString german = QStringLiteral("orvane_de");
    EXPECT_EQ(of("fr-FR,de-AT,en"), german);
    EXPECT_EQ(of("en-GB,de"), english);
    EXPECT_EQ(of("fr"), english) << "English stands in";
    EXPECT_EQ(of("C"), english);
    EXPECT_EQ(of(""), english);
}

TEST(LocaleForTexts, HasTheDigitsOfTheTexts)
{
    const QLocale egypt(QLocale::Arabic, QLocale::Egypt);
    ASSERT_NE(egypt.zeroDigit(), QStringLiteral("0"));
    EXPECT_EQ(localeForTexts(egypt, QLocale::English).zeroDigit(), QStringLiteral("0"));
    EXPECT_EQ(localeForTexts(egypt, QLocale::English).language(), QLocale::English);
    const QLocale france(QLocale::French, QLocale::France);
    EXPECT_EQ(localeForTexts(france, QLocale::English), france) << "times are the user's";
}

/// The texts in a language, as a person has them who starts the program with it.
class WordsTest : public ::testing::Test {
protected:
    void speak(const char* locale) { m_catalogues.emplace(QLocale(QLatin1StringView(locale))); }

    FakePlatform fake;

private:
    std::optional<Catalogues> m_catalogues;
};

constexpr EventFlags allFour = eventFlag::command | eventFlag::shift | eventFlag::option | eventFlag::control;

TEST_F(WordsTest, WithoutACatalogueAShortcutIsWrittenInSigns)
{
    EXPECT_EQ(Shortcut(Key::space, allFour).description(), QStringLiteral("⌃⌥⇧⌘Space"));
    EXPECT_EQ(Shortcut(Key::keypad7, eventFlag::command).description(), QStringLiteral("⌘7\u20E3"));
}

TEST_F(WordsTest, ShortcutsAreWrittenAsThisDesktopWritesThem)
{
    speak("en_US");
    EXPECT_EQ(Shortcut(Key::space, allFour).description(), QStringLiteral("Super+Ctrl+Alt+Shift+Space"));
    EXPECT_EQ(Shortcut(Key::v, eventFlag::control | eventFlag::shift).description(),
              QStringLiteral("Ctrl+Shift+V"));
    EXPECT_EQ(Shortcut(Key::k, eventFlag::command).description(), QStringLiteral("Super+K"));
    EXPECT_EQ(Shortcut(Key::delete_, eventFlag::option).description(), QStringLiteral("Alt+Backspace"));
    EXPECT_EQ(Shortcut(Key::keypad7, eventFlag::command).description(), QStringLiteral("Super+Num 7"));
}

TEST_F(WordsTest, GermanShortcutsHaveTheWordsOfGermanKeyboards)
{
    speak("de_DE");
    EXPECT_EQ(Shortcut(Key::v, eventFlag::control | eventFlag::shift).description(),
              QStringLiteral("Strg+Umschalt+V"));
    EXPECT_EQ(Shortcut(Key::deleteForward, eventFlag::command).description(), QStringLiteral("Super+Entf"));
}

TEST_F(WordsTest, TheToolkitsOwnButtonsAreGermanToo)
{
    speak("de_DE");
    EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"), QStringLiteral("Abbrechen"));
}

TEST_F(WordsTest, ShortcutsAreSpokenInTheWordsOfThisDesktop)
{
    speak("en_US");
    EXPECT_EQ(spokenDescription(Shortcut(Key::space, allFour)),
              QStringLiteral("Control Alt Shift Super Space"));
    EXPECT_EQ(spokenDescription(Shortcut(Key::keypad7, eventFlag::option)), QStringLiteral("Alt Keypad 7"));
}

TEST_F(WordsTest, ShortcutsAreSpokenInGerman)
{
    speak("de_DE");
    EXPECT_EQ(spokenDescription(Shortcut(Key::space, eventFlag::control | eventFlag::shift)),
              QStringLiteral("Steuerung Umschalt Leertaste"));
    EXPECT_EQ(spokenDescription(Shortcut(Key::keypad7, eventFlag::option)),
              QStringLiteral("Alt Ziffernblock 7"));
}

} // namespace
