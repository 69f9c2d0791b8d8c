// The Linux layer's accessibility elements on the private desktop, and windows of other programs for them.
#pragma once

#include "Desktop/Support/Peer.h"
#include "Desktop/Support/WindowManager.h"
#include "Desktop/Support/Windows.h"
#include "Fakes/FakePermissions.h"
#include "Platform/NotificationCenter.h"
#include "PlatformLinux/Accessibility/X11Accessibility.h"
#include "PlatformLinux/Screens/X11Screens.h"
#include "Support/Eventually.h"

#include <gmock/gmock.h>

#include <csignal>
#include <memory>

namespace orvane::tests {

/// Returns the element's `attribute` if it is of that kind.
template <typename Kind>
std::optional<Kind> readAX(Accessibility& accessibility, const AXUIElement& element, const char* attribute)
{
    const auto copied = accessibility.copyAttributeValue(element, QString::fromLatin1(attribute));
    const Kind* value = copied.value ? std::get_if<Kind>(&*copied.value) : nullptr;
    return copied.error == AXError::success && value ? std::optional(*value) : std::nullopt;
}

enum class WindowKind { qt, gtkHeaderBar, terminal };

inline void PrintTo(WindowKind kind, std::ostream* out)
{
    *out << (kind == WindowKind::qt ? "qt" : kind == WindowKind::terminal ? "terminal" : "gtkHeaderBar");
}

/// A window of another program, which ends with the object.
class ForeignWindow {
public:
    ForeignWindow(const Windows& windows, WindowKind kind, const QString& title)
        : m_peer(program(kind), arguments(kind, title)), m_windows(windows)
    {
        EXPECT_TRUE(eventually(15s, [&] {
            id = windows.find(title).value_or(0);
            return id != 0 && windows.active() == id;
        })) << qPrintable(title);
        EXPECT_TRUE(settleWindowManager());
    }
    ~ForeignWindow() { resume(); }
    ForeignWindow(const ForeignWindow&) = delete;
    ForeignWindow& operator=(const ForeignWindow&) = delete;

    [[nodiscard]] qint64 pid() const { return m_peer.pid(); }
    [[nodiscard]] QRect frame() const { return m_windows.frame(id); }
    [[nodiscard]] bool hasState(const char* state) const { return m_windows.hasState(id, state); }
    void hang() const { ::kill(static_cast<pid_t>(pid()), SIGSTOP); }
    void resume() const { ::kill(static_cast<pid_t>(pid()), SIGCONT); }

    WindowId id = 0;

private:
    static QString program(WindowKind kind)
    {
        switch (kind) {
        case WindowKind::qt:
            return Peer::window();
        case WindowKind::gtkHeaderBar:
            return Peer::gtkHeaderBar();
        case WindowKind::terminal:
            break;
        }
        return QStringLiteral("xterm");
    }

    static QStringList arguments(WindowKind kind, const QString& title)
    {
        // With a scalable font it would change its size a moment after it has appeared.
        if (kind == WindowKind::terminal)
            return {u"-title"_qs, title, u"-e"_qs, u"cat"_qs};
        return {title, u"200"_qs, u"150"_qs, u"480"_qs, u"320"_qs};
    }

    Peer m_peer;
    const Windows& m_windows;
};

class X11ElementsTest : public ::testing::Test {
protected:
    X11ElementsTest() { m_permissions.accessibility = true; }

    template <typename Kind>
    std::optional<Kind> read(const AXUIElement& element, const char* attribute)
    {
        return readAX<Kind>(m_accessibility, element, attribute);
    }

    AXError errorOf(const AXUIElement& element, const char* attribute)
    {
        return m_accessibility.copyAttributeValue(element, QString::fromLatin1(attribute)).error;
    }

    AXError set(const AXUIElement& element, const char* attribute, const AXValue& value)
    {
        return m_accessibility.setAttributeValue(element, QString::fromLatin1(attribute), value);
    }

    AXError perform(const AXUIElement& element, const char* action)
    {
        return m_accessibility.performAction(element, QString::fromLatin1(action));
    }

    /// Returns the element of the focused window; ends the test when that isn't this window.
    AXUIElement elementOf(const ForeignWindow& window)
    {
        const AXUIElement application = m_accessibility.createApplication(window.pid());
        const auto windows = read<QList<AXUIElement>>(application, "AXWindows");
        if (!windows || windows->isEmpty())
            throw std::runtime_error("the program has no window");
        return windows->first();
    }

    std::optional<QRectF> frameOf(const AXUIElement& window)
    {
        const auto position = read<Point>(window, "AXPosition");
        const auto size = read<Size>(window, "AXSize");
        if (!position || !size)
            return std::nullopt;
        return QRectF(position->x, position->y, size->width, size->height);
    }

    /// Sets the frame in the order in which all callers place windows.
    void place(const AXUIElement& window, const QRectF& frame)
    {
        const Point origin{frame.x(), frame.y()};
        EXPECT_EQ(set(window, "AXPosition", origin), AXError::success);
        EXPECT_EQ(set(window, "AXSize", Size{frame.width(), frame.height()}), AXError::success);
        EXPECT_EQ(set(window, "AXPosition", origin), AXError::success);
    }

    Windows m_windows;
    NotificationCenter m_center;
    X11Screens m_screens{m_center};
    FakePermissions m_permissions;
    X11Accessibility m_accessibility{m_screens, m_permissions};
};

} // namespace orvane::tests
