// A status bar whose items are clicked by the test and whose opened menus can be read and chosen from.
#pragma once

#include "Platform/NotificationCenter.h"
#include "Platform/StatusBar.h"

#include <utility>
#include <vector>

namespace orvane {

class FakeStatusBar;

class FakeStatusItem : public StatusItem {
public:
    FakeStatusItem(FakeStatusBar& bar, double itemLength);
    ~FakeStatusItem() override;

    void setAutosaveName(const QString& name) override { autosaveName = name; }
    void setImage(const TemplateImage& newImage) override { image = newImage; }
    void setToolTip(const QString& text) override { toolTip = text; }
    void setAction(Action newAction) override { action = std::move(newAction); }
    void setMenu(MenuDelegate delegate) override { menu = std::move(delegate); }
    void performClick() override { click(nullptr); }

    /// Acts as the platform does at a user's click; a null event is a click of unknown kind.
    void click(const StatusItemEvent* event);
    void click(StatusItemEvent event) { click(&event); }

    TemplateImage image;
    QString autosaveName;
    QString toolTip;
    double length;
    Action action;
    MenuDelegate menu;
    /// Every menu that was opened on this item, the latest at the end.
    std::vector<Menu> openedMenus;

private:
    FakeStatusBar& m_bar;
};

class FakeStatusBar : public StatusBar {
public:
    /// `center` is told of changes; it may be null.
    explicit FakeStatusBar(NotificationCenter* center = nullptr) : m_center(center) {}

    [[nodiscard]] Area area() const override { return items.empty() ? Area::unknown : m_area; }
    /// Acts as a panel that comes or goes.
    void setArea(Area area)
    {
        if (std::exchange(m_area, area) != area && m_center)
            m_center->post(areaDidChangeNotification());
    }

    std::unique_ptr<StatusItem> makeStatusItem(double length) override
    {
        onMake();
        return std::make_unique<FakeStatusItem>(*this, length);
    }

    /// Existing items, in the order in which they were made.
    std::vector<FakeStatusItem*> items;
    /// Called before each item is made.
    std::function<void()> onMake = [] {};

private:
    NotificationCenter* m_center;
    Area m_area = Area::present;
};

/// Chooses an item of a menu as a user would; false when it can't be chosen.
bool choose(const Menu& menu, const QString& title);
const MenuItem* findItem(const Menu& menu, const QString& title);

} // namespace orvane
