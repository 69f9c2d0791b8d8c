// The shortcut of one action on a capability's page, with the popover to set it. Main thread.
#pragma once

#include "OrvaneCore/Base/Observable.h"
#include "OrvaneCore/Base/OrvaView.h"
#include "OrvaneCore/Capability/Capability.h"
#include "OrvaneKit/Model/OrvaComposite.h"

#include <memory>

namespace orvane {

class HotkeyChip {
public:
    static constexpr double popoverWidth = 260; // points
    static constexpr double popoverPadding = 14;

    explicit HotkeyChip(HotkeyAction action);

    /// Returns the chip and, while it is open, its popover.
    [[nodiscard]] AnyView body() const;
    [[nodiscard]] QList<AnyView> children() const { return {body()}; }

    /// Reads the stored shortcut; called when the chip becomes visible.
    void appear() const;

    [[nodiscard]] QString text() const;
    [[nodiscard]] bool showsRecorder() const { return m_state->showRecorder.get(); }

private:
    struct State {
        Observable<bool> showRecorder{false};
        Observable<std::optional<QString>> shortcut;
    };

    [[nodiscard]] AnyView recorder() const;
    [[nodiscard]] AnyView popover() const;

    HotkeyAction m_action;
    std::shared_ptr<State> m_state = std::make_shared<State>();
};

} // namespace orvane
