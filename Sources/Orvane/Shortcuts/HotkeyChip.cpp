#include "Orvane/Shortcuts/HotkeyChip.h"

#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "KeyboardShortcuts/Recorder/Recorder.h"
#include "Orvane/Brand/ShellText.h"
#include "Orvane/Navigation/OrvaNavigation.h"
#include "Orvane/Shortcuts/ShortcutViews.h"
#include "OrvaneKit/Model/OrvaLayout.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

namespace orvane {

namespace {

constexpr double titleGap = 10;

std::optional<QString> storedShortcut(const HotkeyAction& action)
{
    const auto shortcut = KeyboardShortcuts::getShortcut(KeyboardShortcuts::Name(action.id));
    return shortcut ? std::optional(shortcut->description()) : std::nullopt;
}

} // namespace

HotkeyChip::HotkeyChip(HotkeyAction action) : m_action(std::move(action))
{
    appear();
}

void HotkeyChip::appear() const
{
    m_state->shortcut.set(storedShortcut(m_action));
}

QString HotkeyChip::text() const
{
    return m_state->shortcut.get().value_or(ShellText::tr("Set shortcut"));
}

AnyView HotkeyChip::recorder() const
{
    KeyboardShortcuts::Recorder recorder(KeyboardShortcuts::Name(m_action.id),
                                         [own = *this](const auto&) { own.appear(); });
    recorder.accessibleName = m_action.title;
    // The recorder has its own room for its focus ring.
    const OrvaInset title{orvaRingMargin, OrvaText{m_action.title, OrvaFont::headline}};
    return OrvaVStack{titleGap - orvaRingMargin, {title, recorder}};
}

AnyView HotkeyChip::popover() const
{
    const std::shared_ptr<ObservableObject> shortcut(m_state, &m_state->shortcut);
    const std::shared_ptr<ObservableObject> showRecorder(m_state, &m_state->showRecorder);
    const Binding<bool> isPresented([state = m_state] { return state->showRecorder.get(); },
                                    [state = m_state](bool shown) { state->showRecorder.set(shown); },
                                    {showRecorder});
    const OrvaChip chip{
        .text = Live<QString>([own = *this] { return own.text(); }, {shortcut}),
        .systemImage = QStringLiteral("keyboard"),
        .prominent = Live<bool>([state = m_state] { return state->shortcut.get().has_value(); }, {shortcut})};
    return OrvaPopover{.isPresented = isPresented,
                       .width = popoverWidth,
                       .padding = popoverPadding,
                       .accessibleName = m_action.title,
                       .anchor = OrvaChipButton{chip, m_action.title,
                                                [isPresented] { isPresented.set(!isPresented.get()); }},
                       .content = [own = *this] { return own.recorder(); }};
}

AnyView HotkeyChip::body() const
{
    return OrvaAppear{[own = *this] { own.appear(); }, popover()};
}

} // namespace orvane
