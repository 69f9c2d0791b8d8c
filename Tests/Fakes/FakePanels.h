// The desktop's side of panels, as a test sets it; counts the calls.
#pragma once

#include "Platform/NotificationCenter.h"
#include "Platform/Panels.h"

namespace orvane {

class FakePanels : public Panels {
public:
    explicit FakePanels(NotificationCenter& center) : m_center(center) {}

    [[nodiscard]] bool isCompositing() const override { return m_isCompositing; }
    void joinAllSpaces(QWindow&) override { ++joins; }
    void setShadowMargins(QWindow&, const QMargins& margins) override { shadowMargins = margins; }
    void makeKey(QWindow& window) override
    {
        ++keyRequests;
        keyWindow = &window;
    }

    /// Starts or ends a compositor.
    void setCompositing(bool isCompositing)
    {
        m_isCompositing = isCompositing;
        m_center.post(didChangeCompositingNotification());
    }

    int joins = 0;
    int keyRequests = 0;
    QMargins shadowMargins;
    /// The window that asked last; only for comparing.
    const QWindow* keyWindow = nullptr;

private:
    NotificationCenter& m_center;
    bool m_isCompositing = true;
};

} // namespace orvane
