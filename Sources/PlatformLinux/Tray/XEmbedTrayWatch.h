// Knows the owner of the X screen's system tray selection as it comes and goes, its visual and its colours.
// Main thread. Does nothing where there is no X server.
#pragma once

#include "PlatformLinux/X11/X11Connection.h"

#include <QAbstractNativeEventFilter>
#include <QColor>
#include <QObject>

#include <optional>

namespace orvane {

class XEmbedTrayWatch : public QObject, private QAbstractNativeEventFilter {
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
    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;
    void findTray();
    void readForeground();
    void readVisual();

    std::optional<X11Connection> m_x;
    xcb_atom_t m_selection = XCB_ATOM_NONE;
    xcb_atom_t m_manager = XCB_ATOM_NONE;
    xcb_atom_t m_colors = XCB_ATOM_NONE;
    xcb_window_t m_tray = XCB_WINDOW_NONE;
    xcb_visualid_t m_visual = 0;
    std::optional<QColor> m_foreground;
};

} // namespace orvane
