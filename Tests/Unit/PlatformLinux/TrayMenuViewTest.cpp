#include "PlatformLinux/Menus/TrayMenuView.h"

#include <QApplication>
#include <QMenu>
#include <QPainter>
#include <QPixmapCache>

#include <gtest/gtest.h>

namespace orvane::tests {
namespace {

QMenu* openMenu()
{
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (auto* menu = qobject_cast<QMenu*>(widget); menu && menu->isVisible())
            return menu;
    }
    return nullptr;
}

Menu menuWithPictures()
{
    TemplateImage square;
    square.size = QSizeF(18, 18);
    square.draw = [](QPainter& painter, const QRectF& rect) { painter.fillRect(rect, Qt::black); };
    Menu menu;
    for (const bool enabled : {true, false}) {
        MenuItem item;
        item.title = QStringLiteral("Item");
        item.image = square;
        item.enabled = enabled;
        item.action = [](const MenuItem&) {};
        menu.items.append(item);
    }
    return menu;
}

void deleteLater()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

/// The least room of the toolkit's cache of pictures, with one picture of ours in it: it goes when others
/// need the room.
class SmallPictureCache {
public:
    SmallPictureCache()
    {
        QPixmapCache::clear();
        QPixmapCache::setCacheLimit(kilobytes);
        m_key = QPixmapCache::insert(QPixmap(8, 8));
    }
    ~SmallPictureCache() { QPixmapCache::setCacheLimit(m_limit); }
    SmallPictureCache(const SmallPictureCache&) = delete;
    SmallPictureCache& operator=(const SmallPictureCache&) = delete;

    [[nodiscard]] bool hasRoomLeft() const
    {
        QPixmap picture;
        return QPixmapCache::find(m_key, &picture);
    }

private:
    static constexpr int kilobytes = 64;

    int m_limit = QPixmapCache::cacheLimit();
    QPixmapCache::Key m_key;
};

} // namespace

TEST(TrayMenuViewTest, OpenedOftenItLeavesNoMenusAndNoPictures)
{
    const SmallPictureCache cache;
    const auto widgets = QApplication::allWidgets().size();
    TrayMenuView view;
    for (int i = 0; i < 100; ++i) {
        view.popUp(menuWithPictures(), QRect(300, 300, 20, 20));
        ASSERT_TRUE(openMenu());
        (void)openMenu()->grab(); // as it is drawn
        view.close();
        deleteLater();
    }
    EXPECT_EQ(QApplication::allWidgets().size(), widgets);
    EXPECT_TRUE(cache.hasRoomLeft());
}

TEST(TrayMenuViewTest, APictureHasTheColourOfItsEntry)
{
    TrayMenuView view;
    view.popUp(menuWithPictures(), QRect(300, 300, 20, 20));
    ASSERT_TRUE(openMenu());
    const QPalette palette = openMenu()->palette();
    const QList<QAction*> actions = openMenu()->actions();
    ASSERT_EQ(actions.size(), 2);
    const auto colour = [](const QAction& action, QIcon::Mode mode) {
        const QImage picture = action.icon().pixmap(QSize(16, 16), 2.0, mode).toImage();
        EXPECT_EQ(picture.size(), QSize(32, 32));
        return picture.pixelColor(16, 16).rgb();
    };
    EXPECT_EQ(colour(*actions[0], QIcon::Normal),
              palette.color(QPalette::Active, QPalette::WindowText).rgb());
    EXPECT_EQ(colour(*actions[0], QIcon::Active),
              palette.color(QPalette::Active, QPalette::WindowText).rgb());
    EXPECT_EQ(colour(*actions[1], QIcon::Disabled),
              palette.color(QPalette::Disabled, QPalette::WindowText).rgb());
    view.close();
    deleteLater();
}

} // namespace orvane::tests
