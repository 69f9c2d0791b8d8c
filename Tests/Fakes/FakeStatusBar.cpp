#include "Fakes/FakeStatusBar.h"

#include <algorithm>

namespace orvane {

FakeStatusItem::FakeStatusItem(FakeStatusBar& bar, double itemLength) : length(itemLength), m_bar(bar)
{
    m_bar.items.push_back(this);
}

FakeStatusItem::~FakeStatusItem()
{
    std::erase(m_bar.items, this);
}

void FakeStatusItem::click(const StatusItemEvent* event)
{
    if (menu) {
        openedMenus.push_back(menu());
        return;
    }
    if (const auto handler = action)
        handler(event);
}

const MenuItem* findItem(const Menu& menu, const QString& title)
{
    const auto it = std::find_if(menu.items.begin(), menu.items.end(), [&](const MenuItem& item) {
        return item.kind == MenuItem::Kind::item && item.title == title;
    });
    return it != menu.items.end() ? &*it : nullptr;
}

bool choose(const Menu& menu, const QString& title)
{
    const MenuItem* item = findItem(menu, title);
    if (!item || !item->enabled || !item->action)
        return false;
    item->action(*item);
    return true;
}

} // namespace orvane
