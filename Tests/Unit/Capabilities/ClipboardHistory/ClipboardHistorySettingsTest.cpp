// The names under which the settings are stored, and their values where nothing is stored.
#include "HistoryFixture.h"

namespace orvane::tests {

namespace {

class ClipboardHistorySettingsTest : public HistoryFixture {
protected:
    [[nodiscard]] QVariant stored(const char* key) const
    {
        return fake.defaults.stored.value(historyID + u'.' + QLatin1StringView(key));
    }
};

} // namespace

TEST_F(ClipboardHistorySettingsTest, TheUsualValues)
{
    EXPECT_EQ(settings->maxItems.get(), 200);
    EXPECT_EQ(settings->pollInterval.get(), 0.4);
    EXPECT_TRUE(settings->persist.get());
    EXPECT_TRUE(settings->captureText.get());
    EXPECT_TRUE(settings->captureImages.get());
    EXPECT_TRUE(settings->captureFiles.get());
    EXPECT_FALSE(settings->autoPaste.get());
    EXPECT_TRUE(settings->ignoreConcealed.get());
}

TEST_F(ClipboardHistorySettingsTest, EachIsStoredUnderItsKey)
{
    settings->maxItems.set(40);
    EXPECT_EQ(stored("maxItems"), 40);
    settings->pollInterval.set(2.5);
    EXPECT_EQ(stored("pollInterval"), 2.5);
    settings->persist.set(false);
    EXPECT_EQ(stored("persist"), false);
    settings->captureText.set(false);
    EXPECT_EQ(stored("captureText"), false);
    settings->captureImages.set(false);
    EXPECT_EQ(stored("captureImages"), false);
    settings->captureFiles.set(false);
    EXPECT_EQ(stored("captureFiles"), false);
    settings->autoPaste.set(true);
    EXPECT_EQ(stored("autoPaste"), true);
    settings->ignoreConcealed.set(false);
    EXPECT_EQ(stored("ignoreConcealed"), false);
}

} // namespace orvane::tests
