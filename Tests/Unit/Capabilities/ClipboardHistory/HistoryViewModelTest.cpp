#include "Capabilities/ClipboardHistory/Panel/HistoryViewModel.h"
#include "ClipItems.h"

#include <gtest/gtest.h>

namespace orvane::tests {

TEST(HistoryViewModel, IsEmptyAndWithoutOwnersAtTheStart)
{
    const HistoryViewModel model;
    EXPECT_TRUE(model.items.get().isEmpty());
    EXPECT_TRUE(model.query.get().isEmpty());
    EXPECT_TRUE(model.filtered().isEmpty());
    EXPECT_FALSE(model.onSelect || model.onDelete || model.onTogglePin || model.onClose ||
                 model.imageProvider);
}

TEST(HistoryViewModel, FiltersAsTheStoreSearches)
{
    HistoryViewModel model;
    const QList<ClipItem> items{textClip(QStringLiteral("Primate")), imageClip(QStringLiteral("ima.png")),
                                textClip(QStringLiteral("other")),
                                filesClip({QStringLiteral("/ima/name")}, QStringLiteral("name"))};
    model.items.set(items);
    EXPECT_EQ(model.filtered(), items);
    model.query.set(QStringLiteral(" \t"));
    EXPECT_EQ(model.filtered(), items);
    model.query.set(QStringLiteral("  IMA "));
    EXPECT_EQ(model.filtered(), QList<ClipItem>({items[0], items[1]})) << "paths aren't searched";
    model.query.set(QStringLiteral("nothing of it"));
    EXPECT_TRUE(model.filtered().isEmpty());
}

TEST(HistoryViewModel, SearchesInTheLocaleOfTheUser)
{
    const QLocale before;
    HistoryViewModel model;
    const QList<ClipItem> items{textClip(QStringLiteral("TITLE")), textClip(QStringLiteral("title"))};
    model.items.set(items);
    model.query.set(QStringLiteral("title"));
    EXPECT_EQ(model.filtered(), items);
    QLocale::setDefault(QLocale(QLocale::Turkish)); // whose small letter to "I" has no dot
    EXPECT_EQ(model.filtered(), QList<ClipItem>{items[1]});
    QLocale::setDefault(before);
}

} // namespace orvane::tests
