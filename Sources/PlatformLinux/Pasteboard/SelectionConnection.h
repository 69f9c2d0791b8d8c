// The pasteboard thread's connection to the X server: atoms by name, properties, windows to ask from.
// Requests may meet a window that is gone; their errors are dropped.
#pragma once

#include "PlatformLinux/Pasteboard/SelectionRequests.h"
#include "PlatformLinux/X11/XExchange.h"

#include <QByteArray>
#include <QHash>
#include <QList>

#include <xcb/xcb.h>

#include <cstdint>
#include <memory>
#include <optional>

namespace orvane {

class SelectionConnection : public SelectionRequests {
public:
    /// Null without a server, or without its XFixes extension. Waits for the server, here and later, until
    /// `cancellation` is readable.
    [[nodiscard]] static std::unique_ptr<SelectionConnection> open(int cancellation = -1);

    [[nodiscard]] xcb_connection_t* xcb() const { return m_link->xcb(); }
    [[nodiscard]] XLink& link() const { return *m_link; }
    [[nodiscard]] int descriptor() const { return m_link->descriptor(); }
    [[nodiscard]] XcbReply<xcb_generic_event_t> nextEvent() { return m_link->nextEvent(); }
    [[nodiscard]] bool isLost() const { return m_link->isLost(); }
    /// Returns the type of the events about changes of owner.
    [[nodiscard]] std::uint8_t selectionEvent() const { return m_selectionEvent; }
    [[nodiscard]] xcb_atom_t clipboard() const { return m_link->atoms().clipboard; }

    /// Returns the window that owns the clipboard when this program does.
    [[nodiscard]] xcb_window_t window() const { return m_window; }
    [[nodiscard]] xcb_window_t createWindow() override;
    void destroyWindow(xcb_window_t window) override;
    [[nodiscard]] xcb_atom_t atom(const QByteArray& name) override;
    [[nodiscard]] QList<QByteArray> names(const xcb_atom_t* atoms, std::size_t count) override;
    void convert(xcb_window_t window, xcb_atom_t target, xcb_atom_t property) override;
    [[nodiscard]] std::optional<Property> takeProperty(xcb_window_t window, xcb_atom_t name,
                                                       qsizetype limit) override;
    [[nodiscard]] bool clipboardHasOwner() const override;
    void flush() { m_link->flush(); }

private:
    explicit SelectionConnection(std::unique_ptr<XLink> link) : m_link(std::move(link)) {}
    bool begin();
    [[nodiscard]] XExchange exchange() const;

    std::unique_ptr<XLink> m_link;
    xcb_window_t m_window = XCB_WINDOW_NONE;
    std::uint8_t m_selectionEvent = 0;
    QHash<QByteArray, xcb_atom_t> m_atoms;
    QHash<xcb_atom_t, QByteArray> m_names;
};

} // namespace orvane
