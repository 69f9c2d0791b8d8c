// The requests with which the clipboard of other programs is read. An interface, so that the reading of
// foreign answers can be driven without a server. The pasteboard's thread.
#pragma once

#include <QByteArray>
#include <QList>

#include <cstdint>
#include <optional>

#include <xcb/xcb.h>

namespace orvane {

class SelectionRequests {
public:
    SelectionRequests() = default;
    virtual ~SelectionRequests() = default;
    SelectionRequests(const SelectionRequests&) = delete;
    SelectionRequests& operator=(const SelectionRequests&) = delete;

    /// Makes a further window, which the caller has to destroy.
    [[nodiscard]] virtual xcb_window_t createWindow() = 0;
    virtual void destroyWindow(xcb_window_t window) = 0;

    /// Makes a round trip for each new one. None when the server has no room for it.
    [[nodiscard]] virtual xcb_atom_t atom(const QByteArray& name) = 0;
    /// Makes one round trip for all new ones; unknown atoms are left out.
    [[nodiscard]] virtual QList<QByteArray> names(const xcb_atom_t* atoms, std::size_t count) = 0;

    /// Asks the clipboard's owner to put this target into a property of the window. The answer is an event.
    virtual void convert(xcb_window_t window, xcb_atom_t target, xcb_atom_t property) = 0;

    struct Property {
        xcb_atom_t type = XCB_ATOM_NONE; // None where there is no such property
        std::uint8_t format = 0;
        QByteArray bytes;
    };
    /// Returns a property and deletes it from its window. Nothing when it is larger than the limit, and then
    /// it stays.
    [[nodiscard]] virtual std::optional<Property> takeProperty(xcb_window_t window, xcb_atom_t name,
                                                               qsizetype limit) = 0;

    [[nodiscard]] virtual bool clipboardHasOwner() const = 0;
};

} // namespace orvane
