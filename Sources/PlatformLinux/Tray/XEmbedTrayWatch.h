// Knows the owner of the X screen's system tray selection as it comes and goes, its visual and its colours.
// Main thread. Does nothing where there is no X server.
#pragma once

#include "PlatformLinux/X11/ApplicationLink.h"

#include <QColor>
#include <QObject>

#include <memory>
#include <optional>

namespace orvane {

class XEmbedTrayWatch : public QObject {
    Q_OBJECT
public:
    explicit XEmbedTrayWatch(QObject* parent = nullptr);
    ~XEmbedTrayWatch() override;

    /// The window to dock with; 0 if there is no tray.
    [[nodiscard]] xcb_window_t tray() const { return m_tray; }
    /// The visual that the tray wants its icons to have, or the root's.
    [[nodiscard]] xcb_visualid_t visual() const { return m_visual; }
    [[nodiscard]] std::optional<QColor> foreground() const { return m_foreground; }

Q_SIGNALS:
    void trayChanged();
    void foregroundChanged();

private:
    void handle(const xcb_generic_event_t& event);
    void findTray();
    void readForeground(XExchange& exchange);
    void readVisual(XExchange& exchange);

    std::shared_ptr<ApplicationLink> m_x;
    XSelection m_rootSelection;
    XSelection m_traySelection;
    std::unique_ptr<ApplicationLink::Listener> m_listener;
    xcb_window_t m_tray = XCB_WINDOW_NONE;
    xcb_visualid_t m_visual = 0;
    std::optional<QColor> m_foreground;
};

} // namespace orvane
