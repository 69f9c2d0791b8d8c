// The shortcut of one action on a capability's page, with the popover to set it. Main thread.
#pragma once

#include "Orvane/Shortcuts/ShortcutNote.h"
#include "OrvaneCore/Base/Observable.h"
#include "OrvaneCore/Base/OrvaView.h"
#include "OrvaneCore/Capability/Capability.h"
#include "OrvaneKit/Model/OrvaComposite.h"
#include "Platform/NotificationCenter.h"

#include <memory>
#include <vector>

namespace orvane {

class HotkeyChip {
public:
    static constexpr double popoverWidth = 260; // points
    static constexpr double popoverPadding = 14;

    /// `titleOf` names other actions that have the same shortcut.
    explicit HotkeyChip(HotkeyAction action, ActionTitle titleOf = {});

    /// Returns the chip and, while it is open, its popover.
    [[nodiscard]] AnyView body() const;
    [[nodiscard]] QList<AnyView> children() const { return {body()}; }

    /// Reads the stored shortcut and what is wrong with it; called when the chip becomes visible.
    void appear() const;

    [[nodiscard]] QString text() const;
    [[nodiscard]] bool showsRecorder() const { return m_state->showRecorder.get(); }

private:
    struct State {
        Observable<bool> showRecorder{false};
        Observable<std::optional<QString>> shortcut;
        Observable<QString> note;
        /// Of changes of any shortcut, and of what the system says to them.
        std::vector<std::unique_ptr<NotificationCenter::Token>> observers;
    };

    [[nodiscard]] AnyView recorder() const;
    [[nodiscard]] AnyView popover() const;
    [[nodiscard]] AnyView note() const;
    void observe();

    HotkeyAction m_action;
    ActionTitle m_titleOf;
    std::shared_ptr<State> m_state = std::make_shared<State>();
};

} // namespace orvane
