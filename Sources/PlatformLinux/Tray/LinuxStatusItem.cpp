#include "PlatformLinux/Tray/LinuxStatusItem.h"

#include "PlatformLinux/Menus/TrayMenuView.h"
#include "PlatformLinux/Tray/StatusArea.h"
#include "PlatformLinux/Tray/StatusNotifierItem.h"
#include "PlatformLinux/Tray/XEmbedTrayWindow.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

namespace orvane {

namespace {

using namespace std::chrono_literals;

/// The pauses before an item whose connection to the bus was lost takes its place again.
constexpr std::chrono::milliseconds firstReturnPause = 100ms;
constexpr std::chrono::milliseconds longestReturnPause = 60s;

/// The lowest number not in use, so that an item that is made again is known to the desktop by its old name.
class ItemNumber {
public:
    static int take()
    {
        const auto free = std::find(taken().begin(), taken().end(), false);
        const int number = static_cast<int>(free - taken().begin()) + 1;
        if (free == taken().end())
            taken().push_back(true);
        else
            *free = true;
        return number;
    }

    static void giveBack(int number) { taken()[static_cast<std::size_t>(number - 1)] = false; }

private:
    static std::vector<bool>& taken()
    {
        static std::vector<bool> numbers;
        return numbers;
    }
};

} // namespace

LinuxStatusItem::LinuxStatusItem(std::shared_ptr<StatusArea> area, double length, MenuTracking* tracking)
    : m_area(std::move(area)),
      m_tracking(tracking),
      m_clicks([this](const Menu& menu) { openMenu(menu); }),
      m_menuView(std::make_unique<TrayMenuView>()),
      m_returnPause(firstReturnPause)
{
    m_return.setSingleShot(true);
    connect(&m_return, &QTimer::timeout, this, &LinuxStatusItem::takePlace);
    m_content.number = ItemNumber::take();
    m_content.length = length;
    connect(m_area.get(), &StatusArea::changed, this, &LinuxStatusItem::takePlace);
    connect(m_area.get(), &StatusArea::tintChanged, this, [this] {
        if (m_notifier)
            m_notifier->setTint(m_area->tint());
        if (m_window)
            m_window->setTint(m_area->tint());
    });
    // The owner has yet to set what the item shows.
    scheduleUpdate();
}

LinuxStatusItem::~LinuxStatusItem()
{
    ItemNumber::giveBack(m_content.number);
}

void LinuxStatusItem::setAutosaveName(const QString& name)
{
    m_content.autosaveName = name;
}

void LinuxStatusItem::setImage(const TemplateImage& image)
{
    m_content.image = image;
    ++m_content.imageRevision;
    scheduleUpdate();
}

void LinuxStatusItem::setToolTip(const QString& text)
{
    m_content.toolTip = text;
    scheduleUpdate();
}

void LinuxStatusItem::setAction(Action action)
{
    m_clicks.setAction(std::move(action));
}

void LinuxStatusItem::setMenu(MenuDelegate menuNeedsUpdate)
{
    m_clicks.setMenu(std::move(menuNeedsUpdate));
    // The update comes later: a menu that is attached for one click only is gone again by then.
    scheduleUpdate();
}

void LinuxStatusItem::performClick()
{
    m_clicks.performClick();
}

void LinuxStatusItem::scheduleUpdate()
{
    if (std::exchange(m_updateScheduled, true))
        return;
    QMetaObject::invokeMethod(this, &LinuxStatusItem::update, Qt::QueuedConnection);
}

void LinuxStatusItem::update()
{
    m_updateScheduled = false;
    m_content.menuAttached = m_clicks.hasMenu();
    if (m_notifier)
        m_notifier->setContent(m_content);
    if (m_window)
        m_window->setContent(m_content);
    takePlace();
}

void LinuxStatusItem::takePlace()
{
    if (m_updateScheduled)
        return; // update() calls this again with the content complete.
    const StatusArea::Kind kind = m_area->kind();
    if (kind != StatusArea::Kind::notifierHost)
        m_notifier.reset();
    if (kind != StatusArea::Kind::xembedTray)
        m_window.reset();

    const auto clicked = [this](const StatusItemEvent& event) { m_clicks.click(event); };
    if (kind == StatusArea::Kind::notifierHost) {
        if (m_return.isActive())
            return;
        if (!m_notifier) {
            m_notifier = std::make_unique<StatusNotifierItem>(
                m_content, m_area->tint(), clicked, [this] { return m_clicks.menuForHost(); }, m_tracking);
            connect(m_notifier.get(), &StatusNotifierItem::lost, this, &LinuxStatusItem::notifierIsLost,
                    Qt::QueuedConnection);
        }
        m_notifier->registerWith(m_area->host().watcher());
    } else if (kind == StatusArea::Kind::xembedTray) {
        if (!m_window)
            m_window = std::make_unique<XEmbedTrayWindow>(m_content, m_area->tint(), clicked);
        m_window->dock(m_area->xembed().tray(), m_area->xembed().visual());
    }
}

/// Nothing but the connection has gone, so the item stands again on a new one. The pauses grow while the
/// losses follow each other.
void LinuxStatusItem::notifierIsLost()
{
    m_notifier.reset();
    const auto now = std::chrono::steady_clock::now();
    if (now > m_lastLoss + 2 * longestReturnPause)
        m_returnPause = firstReturnPause;
    m_lastLoss = now;
    m_return.start(m_returnPause);
    m_returnPause = std::min(m_returnPause * 2, longestReturnPause);
}

void LinuxStatusItem::openMenu(const Menu& menu)
{
    m_menuView->popUp(menu, m_window ? m_window->screenGeometry() : std::nullopt);
}

} // namespace orvane
