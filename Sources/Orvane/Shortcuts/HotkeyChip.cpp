#include "Orvane/Shortcuts/HotkeyChip.h"

#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "KeyboardShortcuts/Recorder/Recorder.h"
#include "Orvane/Brand/ShellText.h"
#include "Orvane/Navigation/OrvaNavigation.h"
#include "Orvane/Shortcuts/ShortcutViews.h"
#include "OrvaneKit/Model/OrvaControls.h"
#include "OrvaneKit/Model/OrvaLayout.h"
#include "OrvaneKit/Theme/OrvaThemed.h"
#include "Platform/Platform.h"

namespace orvane {

namespace {

constexpr double titleGap = 10;
constexpr double markSide = 12;
constexpr double markGap = 4;

std::optional<QString> storedShortcut(const HotkeyAction& action)
{
    const auto shortcut = KeyboardShortcuts::getShortcut(KeyboardShortcuts::Name(action.id));
    return shortcut ? std::optional(shortcut->description()) : std::nullopt;
}

} // namespace

HotkeyChip::HotkeyChip(HotkeyAction action, ActionTitle titleOf)
    : m_action(std::move(action)), m_titleOf(std::move(titleOf))
{
    appear();
    observe();
}

void HotkeyChip::observe()
{
    const auto update = [weak = std::weak_ptr(m_state), id = m_action.id, titleOf = m_titleOf](const auto&) {
        if (const auto state = weak.lock())
            state->note.set(shortcutNote(id, titleOf));
    };
    NotificationCenter& center = platform().defaultNotificationCenter;
    for (const QString& notification : {KeyboardShortcuts::refusalsDidChangeNotification(),
                                        KeyboardShortcuts::shortcutByNameDidChangeNotification()})
        m_state->observers.push_back(center.addObserver(notification, update));
}

void HotkeyChip::appear() const
{
    m_state->shortcut.set(storedShortcut(m_action));
    m_state->note.set(shortcutNote(m_action.id, m_titleOf));
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

AnyView HotkeyChip::note() const
{
    using Items = QList<OrvaForEach::Item>;
    const std::shared_ptr<ObservableObject> note(m_state, &m_state->note);
    return OrvaForEach{Live<Items>(
        [state = m_state] {
            const QString text = state->note.get();
            if (text.isEmpty())
                return Items{};
            const OrvaHStack line{
                markGap,
                {OrvaSymbolMark{QStringLiteral("exclamationmark.triangle.fill"), markSide, OrvaColor::orange},
                 OrvaText{text, OrvaFont::caption}}};
            return Items{{text, OrvaInset{orvaRingMargin, line}}};
        },
        {note})};
}

AnyView HotkeyChip::body() const
{
    return OrvaAppear{[own = *this] { own.appear(); }, OrvaVStack{0, {popover(), note()}}};
}

} // namespace orvane
