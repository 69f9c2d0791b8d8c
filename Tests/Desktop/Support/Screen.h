// The content of the screen: windows, pointer, pixels. Asks the X server each time.
#pragma once

#include <QImage>
#include <QList>
#include <QPoint>
#include <QRect>
#include <QString>

#include <cstdint>
#include <memory>
#include <optional>

struct xcb_connection_t;

namespace orvane::tests {

enum class WindowType { normal, menu, dock, other };

/// A visible window that says which program it belongs to.
struct ScreenWindow {
    std::uint32_t id = 0;
    std::uint32_t parent = 0;
    qint64 pid = 0;
    QString title;
    WindowType type = WindowType::normal;
    QRect geometry; // in the root window, without the frame
};

class Screen {
public:
    /// Throws std::runtime_error when there is no display.
    Screen();

    [[nodiscard]] QPoint pointer() const;
    [[nodiscard]] std::uint32_t root() const { return m_root; }

    /// Returns the windows in stacking order, the lowest first.
    [[nodiscard]] QList<ScreenWindow> windows() const;
    [[nodiscard]] QList<ScreenWindow> windowsOf(qint64 pid) const;
    [[nodiscard]] std::optional<ScreenWindow> window(qint64 pid, const QString& title) const;
    /// Returns the open menus of all programs, submenus included.
    [[nodiscard]] QList<ScreenWindow> openMenus() const;

    /// Returns the pixels of a part of the root window; of all of it when the part is empty. Null on failure.
    [[nodiscard]] QImage picture(QRect part = {}) const;
    /// True once the wallpaper is there: it comes some time after the desktop, and until then all is black.
    /// Looks at a place that nothing covers.
    [[nodiscard]] bool wallpaperIsAt(QPoint place) const;
    [[nodiscard]] bool savePicture(const QString& file) const { return picture().save(file, "PNG"); }

private:
    struct Closer {
        void operator()(xcb_connection_t* connection) const;
    };
    void collect(std::uint32_t parent, QList<ScreenWindow>& found) const;
    [[nodiscard]] std::optional<ScreenWindow> describe(std::uint32_t id, std::uint32_t parent) const;

    std::unique_ptr<xcb_connection_t, Closer> m_connection;
    std::uint32_t m_root = 0;
    std::uint32_t m_pidAtom = 0, m_nameAtom = 0, m_utf8Atom = 0, m_typeAtom = 0;
    std::uint32_t m_popupMenuAtom = 0, m_dropdownMenuAtom = 0, m_dockAtom = 0, m_normalAtom = 0;
};

} // namespace orvane::tests
