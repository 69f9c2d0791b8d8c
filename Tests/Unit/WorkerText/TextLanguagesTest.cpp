#include "PlatformLinux/Worker/TextLanguages.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace orvane::tests {

namespace {

QStringList strings(const std::vector<const char*>& texts)
{
    QStringList list;
    for (const char* text : texts)
        list.append(QString::fromUtf8(text));
    return list;
}

struct TextLanguagesTest : ::testing::Test {
    void addModel(const char* language) const
    {
        QFile file(folder.filePath(QLatin1String(language) + QStringLiteral(".traineddata")));
        ASSERT_TRUE(file.open(QFile::WriteOnly));
        file.write("model");
    }
    [[nodiscard]] TextLanguages find(const std::vector<const char*>& languages) const
    {
        return {strings(languages), {QStringLiteral("/nonexistent"), folder.path()}};
    }

    QTemporaryDir folder;
};

} // namespace

TEST_F(TextLanguagesTest, TheLocaleComesBeforeTheKeyboardAndEnglishLast)
{
    EXPECT_EQ(TextLanguages::ofUser(strings({"de-AT", "de"}), strings({"us", "fr"})),
              strings({"deu", "eng", "fra"}));
    EXPECT_EQ(TextLanguages::ofUser(strings({"pt_BR"}), {}), strings({"por", "eng"}));
    EXPECT_EQ(TextLanguages::ofUser({}, {}), strings({"eng"}));
    EXPECT_EQ(TextLanguages::ofUser(strings({"C", "tlh"}), strings({"custom"})), strings({"eng"}));
}

TEST_F(TextLanguagesTest, ChineseIsReadInTheScriptOfItsPlace)
{
    EXPECT_EQ(TextLanguages::ofUser(strings({"zh-CN"}), {}), strings({"chi_sim", "eng"}));
    EXPECT_EQ(TextLanguages::ofUser(strings({"zh_TW"}), {}), strings({"chi_tra", "eng"}));
    EXPECT_EQ(TextLanguages::ofUser(strings({"zh-Hant-HK"}), {}), strings({"chi_tra", "eng"}));
}

TEST_F(TextLanguagesTest, TheServersRulesNameTheLayouts)
{
    EXPECT_EQ(TextLanguages::layoutsIn(QByteArray("evdev\0pc105\0us,de\0,nodeadkeys\0\0", 31)),
              strings({"us", "de"}));
    EXPECT_EQ(TextLanguages::layoutsIn("evdev"), QStringList());
    EXPECT_EQ(TextLanguages::layoutsIn({}), QStringList());
}

TEST_F(TextLanguagesTest, TheModelsThatAreThereAreUsedAndThePackagesOfTheOthersAreNamed)
{
    addModel("eng");
    addModel("chi_sim");
    const auto languages = find({"deu", "chi_sim", "chi_tra", "eng"});
    EXPECT_EQ(languages.models(),
              (QList<TextLanguages::Model>{
                  {QStringLiteral("chi_sim"), folder.filePath(QStringLiteral("chi_sim.traineddata"))},
                  {QStringLiteral("eng"), folder.filePath(QStringLiteral("eng.traineddata"))}}));
    const auto described = languages.described();
    ASSERT_EQ(described.inUse.size(), 2);
    EXPECT_TRUE(described.inUse.at(1).contains(QStringLiteral("English")));
    ASSERT_EQ(described.missing.size(), 2);
    EXPECT_EQ(described.missing.at(0), (TextRecognition::MissingLanguage{
                                           QStringLiteral("Deutsch"), QStringLiteral("tesseract-ocr-deu")}));
    EXPECT_EQ(described.missing.at(1).package, QStringLiteral("tesseract-ocr-chi-tra"));
}

TEST_F(TextLanguagesTest, OnlyTheFirstThreeAreUsedBesideEnglish)
{
    for (const char* language : {"deu", "eng", "fra", "ita", "spa"})
        addModel(language);
    const auto languages = find({"spa", "ita", "fra", "deu", "eng"});
    ASSERT_EQ(languages.models().size(), 4);
    EXPECT_EQ(languages.models()[2].language, QStringLiteral("fra"));
    EXPECT_EQ(languages.models().back().language, QStringLiteral("eng"));
    EXPECT_TRUE(languages.described().missing.isEmpty());
}

TEST_F(TextLanguagesTest, WithoutModelsNothingIsInUse)
{
    const auto languages = find({"eng"});
    EXPECT_TRUE(languages.models().isEmpty());
    EXPECT_TRUE(languages.described().inUse.isEmpty());
    EXPECT_EQ(languages.described().missing.size(), 1);
}

} // namespace orvane::tests
