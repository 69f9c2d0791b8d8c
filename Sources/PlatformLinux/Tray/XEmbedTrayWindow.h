// A status item as a window in the XEmbed system tray. It is no Qt window: the tray reparents it, sizes it
// and may destroy it, which a Qt window would not survive. Sizes are pixels, given by the tray. Main thread.
#pragma once

#include "PlatformLinux/Menus/TemplateTint.h"
#include "PlatformLinux/Tray/StatusItemContent.h"
#include "PlatformLinux/X11/ApplicationLink.h"
#include "PlatformLinux/X11/X11Connection.h"

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QRect>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

namespace orvane {

class XEmbedTrayWindow : public QObject, private QAbstractNativeEventFilter {
    Q_OBJECT
public:
    /// Called by a queued call, so that it may destroy the window.
    using ClickHandler = std::function<void(const StatusItemEvent& event)>;

    XEmbedTrayWindow(StatusItemContent content, TrayTint tint, ClickHandler clicked);
    ~XEmbedTrayWindow() override;

    /// Asks the tray to take the window in; does nothing if this tray has been asked already.
    void dock(xcb_window_t tray, xcb_visualid_t visual);
    void setContent(const StatusItemContent& content);
    void setTint(const TrayTint& tint);
    /// The item's place in the coordinates of QScreen; nothing before it is docked.
    [[nodiscard]] std::optional<QRect> screenGeometry() const;

private:
    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;
    void structureEvent(const xcb_generic_event_t* event);
    void buttonEvent(const xcb_button_press_event_t& event, bool press);
    void create(xcb_visualid_t visual);
    void destroy();
    void setProperties();
    void suggestSize();
    void sendDockRequest();
    void paint();
    [[nodiscard]] QImage background() const;
    void showToolTip();

    StatusItemContent m_content;
    TrayTint m_tint;
    ClickHandler m_clicked;
    /// The window lives on the toolkit's connection; what is asked about it goes over the link.
    std::optional<X11Connection> m_x;
    std::shared_ptr<ApplicationLink> m_link;
    xcb_window_t m_tray = XCB_WINDOW_NONE;
    xcb_window_t m_window = XCB_WINDOW_NONE;
    xcb_colormap_t m_colormap = XCB_NONE;
    xcb_gcontext_t m_gc = XCB_NONE;
    std::uint8_t m_depth = 0;
    QSize m_size;
    bool m_docked = false;
    bool m_pressed = false;
    QTimer m_toolTipDelay;
};

} // namespace orvane
