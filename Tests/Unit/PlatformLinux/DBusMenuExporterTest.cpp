#include "PlatformLinux/Tray/DBusMenuExporter.h"

#include <QCoreApplication>
#include <QImage>
#include <QPainter>

#include <gmock/gmock.h>

#include <memory>
#include <utility>
#include <vector>

namespace orvane {
namespace {

using testing::ElementsAre;

class DBusMenuExporterTest : public testing::Test {
protected:
    MenuItem item(const QString& title)
    {
        MenuItem made;
        made.title = title;
        made.action = [this](const MenuItem& sender) { chosen.append(sender.title); };
        return made;
    }

    DBusMenuLayoutItem layout(int parent = 0, int depth = -1, const QStringList& names = {})
    {
        DBusMenuLayoutItem root;
        revision = exporter.GetLayout(parent, depth, names, root);
        return root;
    }

    void click(int id) { exporter.Event(id, QStringLiteral("clicked"), QDBusVariant(QVariant(0)), 0); }
    static void deliverQueuedCalls() { QCoreApplication::sendPostedEvents(); }

    Menu menu;
    int builds = 0;
    QStringList chosen;
    uint revision = 0;
    DBusMenuExporter exporter{[this] {
        ++builds;
        return menu;
    }};
};

QString label(const DBusMenuLayoutItem& item)
{
    return item.properties.value(QStringLiteral("label")).toString();
}

QStringList labels(const DBusMenuLayoutItem& root)
{
    QStringList list;
    for (const DBusMenuLayoutItem& child : root.children)
        list.append(label(child));
    return list;
}

TEST_F(DBusMenuExporterTest, ItemsComeInOrderUnderARootThatIsASubmenu)
{
    menu.items << item(QStringLiteral("One")) << MenuItem::separator() << item(QStringLiteral("Two"));
    const auto root = layout();
    EXPECT_EQ(root.id, 0);
    EXPECT_EQ(root.properties.value(QStringLiteral("children-display")).toString(),
              QStringLiteral("submenu"));
    EXPECT_THAT(labels(root), ElementsAre(QStringLiteral("One"), QString(), QStringLiteral("Two")));
    EXPECT_EQ(root.children[1].properties,
              (QVariantMap{{QStringLiteral("type"), QStringLiteral("separator")}}));
}

TEST_F(DBusMenuExporterTest, WhatAHostTellsOfTheWholeMenuIsPassedOnAndOfSubmenusOnlyTheChoice)
{
    MenuItem more = item(QStringLiteral("More"));
    more.submenu = std::make_shared<Menu>(Menu{{}, {item(QStringLiteral("Inner"))}});
    menu.items << more;
    QStringList told;
    const auto note = [&](const char* what) {
        return [&told, what](const QString&) { told.append(QString::fromLatin1(what)); };
    };
    QObject::connect(&exporter, &DBusMenuExporter::aboutToShow, note("about to show"));
    QObject::connect(&exporter, &DBusMenuExporter::opened, note("opened"));
    QObject::connect(&exporter, &DBusMenuExporter::closed, note("closed"));
    QObject::connect(&exporter, &DBusMenuExporter::clicked, note("clicked"));
    const auto tell = [this](int id, const char* event) {
        exporter.Event(id, QString::fromLatin1(event), QDBusVariant(QVariant(0)), 0);
    };
    (void)exporter.AboutToShow(0);
    const int submenu = layout().children[0].id;
    (void)exporter.AboutToShow(submenu);
    for (const int id : {0, submenu}) {
        tell(id, "opened");
        tell(id, "closed");
    }
    tell(layout().children[0].children[0].id, "clicked");
    EXPECT_EQ(told, (QStringList{QStringLiteral("about to show"), QStringLiteral("opened"),
                                 QStringLiteral("closed"), QStringLiteral("clicked")}));
    deliverQueuedCalls();
}

TEST_F(DBusMenuExporterTest, AnItemThatIsNamedManyTimesIsAnsweredOnce)
{
    menu.items << item(QStringLiteral("One")) << item(QStringLiteral("Two"));
    const int one = layout().children[0].id;
    const QList<int> ids(DBusMenuExporter::mostItems, one);
    EXPECT_EQ(exporter.GetGroupProperties(ids, {}).size(), 1);
    const int before = builds;
    QList<int> unknown;
    EXPECT_TRUE(exporter.AboutToShowGroup(QList<int>(DBusMenuExporter::mostItems, 0), unknown).isEmpty());
    EXPECT_EQ(builds, before + 1);
}

TEST_F(DBusMenuExporterTest, AListThatNoHostWouldSendIsRefusedAsAWhole)
{
    menu.items << item(QStringLiteral("One"));
    const int one = layout().children[0].id;
    const QList<int> ids(DBusMenuExporter::mostItems + 1, one);
    EXPECT_TRUE(exporter.GetGroupProperties(ids, {}).isEmpty());
    const QStringList names(DBusMenuExporter::mostNames + 1, QStringLiteral("label"));
    EXPECT_TRUE(exporter.GetGroupProperties({one}, names).isEmpty());
    EXPECT_EQ(layout(0, -1, names).children.size(), 0u);
    const int before = builds;
    QList<int> unknown;
    EXPECT_TRUE(exporter.AboutToShowGroup(ids, unknown).isEmpty());
    EXPECT_TRUE(unknown.isEmpty());
    EXPECT_EQ(builds, before);
    const DBusMenuEvent event{one, QStringLiteral("clicked"), QDBusVariant(QVariant(0)), 0};
    EXPECT_TRUE(exporter.EventGroup(DBusMenuEventList(DBusMenuExporter::mostEvents + 1, event)).isEmpty());
    deliverQueuedCalls();
    EXPECT_TRUE(chosen.isEmpty());
    (void)exporter.EventGroup({event});
    deliverQueuedCalls();
    EXPECT_EQ(chosen, QStringList{QStringLiteral("One")});
}

TEST_F(DBusMenuExporterTest, UnderscoresAreDoubledSoThatNoneIsTakenForAMnemonic)
{
    menu.items << item(QStringLiteral("a_b__c & d"));
    EXPECT_EQ(label(layout().children[0]), QStringLiteral("a__b____c & d"));
}

TEST_F(DBusMenuExporterTest, AHostileTitleBecomesOneLineOfBoundedLengthInValidText)
{
    const QString halfACharacter(QChar(0xd83d));
    menu.items << item(QStringLiteral("a\nb\tc") + QChar(0) + QStringLiteral("d") + QChar(0x2028) +
                       QStringLiteral("e"))
               << item(halfACharacter) << item(QString(100'000, u'x'));
    const auto root = layout();
    EXPECT_EQ(label(root.children[0]), QStringLiteral("a b c d e"));
    EXPECT_EQ(label(root.children[1]), QStringLiteral("?"));
    EXPECT_EQ(label(root.children[2]), QString(299, u'x') + QChar(0x2026));
}

TEST_F(DBusMenuExporterTest, ATitleCutInTheMiddleOfACharacterStaysValid)
{
    const QString smile = QString::fromUtf8("\xf0\x9f\x98\x80");
    menu.items << item(QString(299, u'x') + smile);
    EXPECT_EQ(label(layout().children[0]), QString(299, u'x') + QChar(0x2026));
}

TEST_F(DBusMenuExporterTest, OnlyAnItemThatIsOnHasACheckMark)
{
    MenuItem on = item(QStringLiteral("On"));
    on.state = MenuItem::State::on;
    menu.items << on << item(QStringLiteral("Off"));
    const auto root = layout();
    EXPECT_EQ(root.children[0].properties.value(QStringLiteral("toggle-type")).toString(),
              QStringLiteral("checkmark"));
    EXPECT_EQ(root.children[0].properties.value(QStringLiteral("toggle-state")).toInt(), 1);
    EXPECT_FALSE(root.children[1].properties.contains(QStringLiteral("toggle-type")));
    EXPECT_FALSE(root.children[1].properties.contains(QStringLiteral("toggle-state")));
}

TEST_F(DBusMenuExporterTest, AKeyEquivalentIsAControlShortcutAndUpperCaseAddsShift)
{
    MenuItem quit = item(QStringLiteral("Quit"));
    quit.keyEquivalent = QStringLiteral("q");
    MenuItem all = item(QStringLiteral("Quit All"));
    all.keyEquivalent = QStringLiteral("Q");
    MenuItem settings = item(QStringLiteral("Settings"));
    settings.keyEquivalent = QStringLiteral(",");
    menu.items << quit << all << settings << item(QStringLiteral("None"));
    const auto root = layout();
    const auto shortcut = [&](std::size_t index) {
        return root.children[index].properties.value(QStringLiteral("shortcut")).value<DBusMenuShortcut>();
    };
    EXPECT_EQ(shortcut(0), (DBusMenuShortcut{{QStringLiteral("Control"), QStringLiteral("q")}}));
    EXPECT_EQ(shortcut(1),
              (DBusMenuShortcut{{QStringLiteral("Control"), QStringLiteral("Shift"), QStringLiteral("q")}}));
    EXPECT_EQ(shortcut(2), (DBusMenuShortcut{{QStringLiteral("Control"), QStringLiteral("comma")}}));
    EXPECT_FALSE(root.children[3].properties.contains(QStringLiteral("shortcut")));
}

TEST_F(DBusMenuExporterTest, ItemsThatCannotBeChosenAreDisabled)
{
    MenuItem disabled = item(QStringLiteral("Disabled"));
    disabled.enabled = false;
    MenuItem inert;
    inert.title = QStringLiteral("Inert");
    MenuItem drawn = item(QStringLiteral("Drawn"));
    drawn.view = MenuItemView{{100, 20}, [](QPainter&, const QRectF&, const QColor&) {}};
    menu.items << disabled << inert << drawn << item(QStringLiteral("Enabled"));
    const auto root = layout();
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_EQ(root.children[i].properties.value(QStringLiteral("enabled")), QVariant(false)) << i;
    EXPECT_FALSE(root.children[3].properties.contains(QStringLiteral("enabled")));
    EXPECT_EQ(label(root.children[2]), QStringLiteral("Drawn"));
    EXPECT_FALSE(root.children[2].properties.contains(QStringLiteral("icon-data")));
    for (const auto& child : root.children)
        click(child.id);
    deliverQueuedCalls();
    EXPECT_THAT(chosen, ElementsAre(QStringLiteral("Enabled")));
}

TEST_F(DBusMenuExporterTest, AnImageIsSentAsAPngWithThePicturesCoverage)
{
    MenuItem withImage = item(QStringLiteral("Image"));
    withImage.image = TemplateImage{
        {}, {}, {16, 16}, [](QPainter& painter, const QRectF& rect) {
            painter.fillRect(QRectF(rect.topLeft(), QSizeF(rect.width() / 2, rect.height())), Qt::black);
        }};
    menu.items << withImage;
    const auto bytes = layout().children[0].properties.value(QStringLiteral("icon-data")).toByteArray();
    const QImage image = QImage::fromData(bytes, "PNG");
    ASSERT_FALSE(image.isNull());
    EXPECT_EQ(image.pixelColor(image.width() / 4, image.height() / 2).alpha(), 255);
    EXPECT_EQ(image.pixelColor(image.width() * 3 / 4, image.height() / 2).alpha(), 0);
}

TEST_F(DBusMenuExporterTest, SubmenusNestAndDepthLimitsWhatIsSent)
{
    MenuItem more;
    more.title = QStringLiteral("More");
    more.submenu = std::make_shared<Menu>();
    more.submenu->items << item(QStringLiteral("Inner"));
    menu.items << more;
    const auto whole = layout();
    ASSERT_EQ(whole.children.size(), 1u);
    EXPECT_EQ(whole.children[0].properties.value(QStringLiteral("children-display")).toString(),
              QStringLiteral("submenu"));
    EXPECT_THAT(labels(whole.children[0]), ElementsAre(QStringLiteral("Inner")));
    EXPECT_TRUE(layout(0, 0).children.empty());
    EXPECT_TRUE(layout(0, 1).children[0].children.empty());
    EXPECT_THAT(labels(layout(whole.children[0].id)), ElementsAre(QStringLiteral("Inner")));
    click(whole.children[0].children[0].id);
    deliverQueuedCalls();
    EXPECT_THAT(chosen, ElementsAre(QStringLiteral("Inner")));
}

TEST_F(DBusMenuExporterTest, AMenuThatContainsItselfEnds)
{
    const auto endless = std::make_shared<Menu>();
    MenuItem again;
    again.title = QStringLiteral("Again");
    again.submenu = endless;
    endless->items << again;
    menu = *endless;
    int depth = 0;
    const auto root = layout();
    for (const auto* at = &root; !at->children.empty(); at = &at->children[0])
        ++depth;
    EXPECT_GT(depth, 1);
    // A message nests at most 64 containers; each level takes three.
    EXPECT_LT(depth, 20);
    endless->items.clear();
}

TEST_F(DBusMenuExporterTest, OnlyTheNamedPropertiesAreSent)
{
    MenuItem on = item(QStringLiteral("On"));
    on.state = MenuItem::State::on;
    menu.items << on;
    const auto root = layout(0, -1, {QStringLiteral("label"), QStringLiteral("visible")});
    EXPECT_EQ(root.children[0].properties.keys(), QStringList{QStringLiteral("label")});
}

TEST_F(DBusMenuExporterTest, TheContentIsAskedForAtEachOpening)
{
    menu.items << item(QStringLiteral("Before"));
    layout();
    menu.items[0].title = QStringLiteral("After");
    EXPECT_TRUE(exporter.AboutToShow(0));
    const int built = builds;
    EXPECT_THAT(labels(layout()), ElementsAre(QStringLiteral("After")));
    EXPECT_EQ(builds, built) << "what AboutToShow built is what the host gets";
    EXPECT_FALSE(exporter.AboutToShow(0)) << "nothing new";
    menu.items[0].title = QStringLiteral("Without notice");
    EXPECT_THAT(labels(layout()), ElementsAre(QStringLiteral("Without notice")));
}

TEST_F(DBusMenuExporterTest, ANewLayoutHasANewRevisionAndAnEqualOneKeepsItsNumbers)
{
    menu.items << item(QStringLiteral("One"));
    const auto first = layout();
    const uint firstRevision = revision;
    const auto second = layout();
    EXPECT_EQ(revision, firstRevision);
    EXPECT_EQ(second.children[0].id, first.children[0].id);
    menu.items << item(QStringLiteral("Two"));
    const auto third = layout();
    EXPECT_GT(revision, firstRevision);
    EXPECT_NE(third.children[0].id, first.children[0].id);
}

TEST_F(DBusMenuExporterTest, AClickOnTheLayoutBeforeStillMeansTheItemThatWasSeen)
{
    menu.items << item(QStringLiteral("Start")) << item(QStringLiteral("Quit"));
    const auto seen = layout();
    menu.items.removeFirst();
    layout();
    click(seen.children[0].id);
    deliverQueuedCalls();
    EXPECT_THAT(chosen, ElementsAre(QStringLiteral("Start")));
}

TEST_F(DBusMenuExporterTest, AClickOnAnOlderLayoutMeansNothing)
{
    menu.items << item(QStringLiteral("One"));
    const auto old = layout();
    for (const QString& title : {QStringLiteral("Two"), QStringLiteral("Three")}) {
        menu.items[0] = item(title);
        layout();
    }
    click(old.children[0].id);
    click(12345);
    click(-1);
    click(0);
    deliverQueuedCalls();
    EXPECT_TRUE(chosen.isEmpty());
}

TEST_F(DBusMenuExporterTest, AClickAfterAnEqualRebuildReachesTheFreshItem)
{
    menu.items << item(QStringLiteral("Same"));
    const auto seen = layout();
    QString reached;
    menu.items[0].action = [&](const MenuItem&) { reached = QStringLiteral("fresh"); };
    exporter.AboutToShow(0);
    click(seen.children[0].id);
    deliverQueuedCalls();
    EXPECT_EQ(reached, QStringLiteral("fresh"));
    EXPECT_TRUE(chosen.isEmpty());
}

TEST_F(DBusMenuExporterTest, AnItemThatIsSwitchedOffIsToldWithoutANewLayout)
{
    menu.items << item(QStringLiteral("Awake")) << item(QStringLiteral("Quit"));
    const auto before = layout();
    int layouts = 0;
    std::vector<std::pair<DBusMenuItemPropertiesList, DBusMenuItemKeysList>> told;
    QObject::connect(&exporter, &DBusMenuExporter::LayoutUpdated, [&] { ++layouts; });
    QObject::connect(&exporter, &DBusMenuExporter::ItemsPropertiesUpdated,
                     [&](const auto& updated, const auto& removed) { told.emplace_back(updated, removed); });
    menu.items[0].enabled = false;
    EXPECT_FALSE(exporter.AboutToShow(0));
    EXPECT_EQ(layouts, 0);
    ASSERT_EQ(told.size(), 1u);
    const auto updated = told[0].first;
    ASSERT_EQ(updated.size(), 1);
    EXPECT_EQ(updated[0].id, before.children[0].id);
    EXPECT_FALSE(updated[0].properties.value(QStringLiteral("enabled"), true).toBool());

    menu.items[0].enabled = true;
    exporter.AboutToShow(0);
    ASSERT_EQ(told.size(), 2u);
    const auto removed = told[1].second;
    ASSERT_EQ(removed.size(), 1);
    EXPECT_THAT(removed[0].names, ElementsAre(QStringLiteral("enabled")));
}

TEST_F(DBusMenuExporterTest, AnItemThatLosesItsCheckMarkIsANewOneSoThatNoEmptyBoxStays)
{
    menu.items << item(QStringLiteral("One hour")) << item(QStringLiteral("Two hours"));
    menu.items[0].state = MenuItem::State::on;
    const auto before = layout();
    menu.items[0].state = MenuItem::State::off;
    menu.items[1].state = MenuItem::State::on;
    EXPECT_TRUE(exporter.AboutToShow(0));
    const auto after = layout();
    EXPECT_NE(after.children[0].id, before.children[0].id);
    EXPECT_FALSE(after.children[0].properties.contains(QStringLiteral("toggle-type")));
}

TEST_F(DBusMenuExporterTest, InvalidatingAnnouncesARevisionThatTheNextLayoutHas)
{
    menu.items << item(QStringLiteral("One"));
    layout();
    const uint before = revision;
    std::vector<std::pair<uint, int>> told;
    QObject::connect(&exporter, &DBusMenuExporter::LayoutUpdated,
                     [&](uint to, int parent) { told.emplace_back(to, parent); });
    exporter.invalidate();
    ASSERT_EQ(told.size(), 1u);
    EXPECT_GT(told[0].first, before);
    EXPECT_EQ(told[0].second, 0);
    layout();
    EXPECT_EQ(revision, told[0].first);
}

TEST_F(DBusMenuExporterTest, AnActionRunsAfterTheCallHasReturned)
{
    menu.items << item(QStringLiteral("One"));
    click(layout().children[0].id);
    EXPECT_TRUE(chosen.isEmpty());
    deliverQueuedCalls();
    EXPECT_THAT(chosen, ElementsAre(QStringLiteral("One")));
}

TEST_F(DBusMenuExporterTest, EventsOtherThanAClickChooseNothing)
{
    menu.items << item(QStringLiteral("One"));
    const int id = layout().children[0].id;
    for (const auto& kind : {QStringLiteral("hovered"), QStringLiteral("opened"), QStringLiteral("closed")})
        exporter.Event(id, kind, QDBusVariant(QVariant(0)), 0);
    deliverQueuedCalls();
    EXPECT_TRUE(chosen.isEmpty());
}

TEST_F(DBusMenuExporterTest, GroupsOfEventsAndOpeningsNameTheUnknownOnes)
{
    menu.items << item(QStringLiteral("One"));
    const int id = layout().children[0].id;
    const QDBusVariant none(QVariant(0));
    EXPECT_THAT(exporter.EventGroup(
                    {{id, QStringLiteral("clicked"), none, 0}, {999, QStringLiteral("clicked"), none, 0}}),
                ElementsAre(999));
    deliverQueuedCalls();
    EXPECT_THAT(chosen, ElementsAre(QStringLiteral("One")));

    menu.items << item(QStringLiteral("Two"));
    QList<int> unknown;
    EXPECT_THAT(exporter.AboutToShowGroup({0, 999}, unknown), ElementsAre(0));
    EXPECT_THAT(unknown, ElementsAre(999));
}

TEST_F(DBusMenuExporterTest, GroupPropertiesAreThoseOfTheLayout)
{
    menu.items << item(QStringLiteral("One")) << item(QStringLiteral("Two"));
    const auto root = layout();
    const auto some = exporter.GetGroupProperties({root.children[1].id, 999}, {QStringLiteral("label")});
    ASSERT_EQ(some.size(), 1);
    EXPECT_EQ(some[0].id, root.children[1].id);
    EXPECT_EQ(some[0].properties.value(QStringLiteral("label")).toString(), QStringLiteral("Two"));
    EXPECT_EQ(exporter.GetGroupProperties({}, {}).size(), 3);
    EXPECT_EQ(exporter.GetProperty(root.children[0].id, QStringLiteral("label")).variant().toString(),
              QStringLiteral("One"));
}

TEST_F(DBusMenuExporterTest, AnActionMayDestroyTheMenu)
{
    std::unique_ptr<DBusMenuExporter> own;
    own = std::make_unique<DBusMenuExporter>([&own] {
        MenuItem last;
        last.title = QStringLiteral("Last");
        last.action = [&own](const MenuItem&) { own.reset(); };
        Menu only;
        only.items << last;
        return only;
    });
    DBusMenuLayoutItem root;
    own->GetLayout(0, -1, {}, root);
    own->Event(root.children[0].id, QStringLiteral("clicked"), QDBusVariant(QVariant(0)), 0);
    deliverQueuedCalls();
    EXPECT_FALSE(own);
}

} // namespace
} // namespace orvane
