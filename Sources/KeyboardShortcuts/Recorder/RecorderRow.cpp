#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "KeyboardShortcuts/Recorder/Recorder.h"
#include "KeyboardShortcuts/Recorder/RecorderCocoaView.h"
#include "OrvaneKit/Model/OrvaBox.h"
#include "OrvaneKit/Model/OrvaRows.h"
#include "OrvaneKit/Theme/OrvaTheme.h"

namespace orvane::KeyboardShortcuts {

namespace {

constexpr int rowH = static_cast<int>(Orva::rowH);
constexpr int rowV = static_cast<int>(Orva::rowV);
constexpr int controlGap = 16;

/// The control as a part of its row.
struct RecorderControl {
    Recorder recorder;
};

QWidget* makeOrvaWidget(const RecorderControl& control)
{
    const Recorder& recorder = control.recorder;
    return new RecorderCocoa(recorder.name, recorder.onChange, recorder.accessibleName);
}

} // namespace

Recorder::Recorder(Name shortcutName, RecorderChange changed)
    : name(std::move(shortcutName)), onChange(std::move(changed))
{
}

Recorder::Recorder(const QString& title, Name shortcutName, RecorderChange changed)
    : Recorder(AnyView(OrvaRowLabel{title}), std::move(shortcutName), std::move(changed), title)
{
}

Recorder::Recorder(AnyView theLabel, Name shortcutName, RecorderChange changed, QString theAccessibleName)
    : name(std::move(shortcutName)),
      onChange(std::move(changed)),
      hasLabel(true),
      label(std::move(theLabel)),
      accessibleName(std::move(theAccessibleName))
{
}

QString Recorder::text() const
{
    const std::optional<Shortcut> shortcut = getShortcut(name);
    return shortcut ? shortcut->description() : QString();
}

void Recorder::set(const std::optional<Shortcut>& shortcut) const
{
    // The callback may end the view that this is a part of.
    const RecorderChange changed = onChange;
    if (shortcut)
        userDefaultsSet(name, *shortcut);
    else
        setShortcut(std::nullopt, name);
    if (changed)
        changed(shortcut);
}

QWidget* makeOrvaWidget(const Recorder& recorder)
{
    const RecorderControl control{recorder};
    if (!recorder.hasLabel || !recorder.label)
        return makeOrvaWidget(control);
    // The control has its own room for its focus ring.
    const QMargins margins(rowH, rowV - orvaRingMargin, rowH - orvaRingMargin, rowV - orvaRingMargin);
    const OrvaBox row{
        .spacing = controlGap,
        .margins = margins,
        .content = {OrvaBoxPart::filling(recorder.label), OrvaBoxPart(AnyView(control), Qt::AlignVCenter)}};
    return makeOrvaWidget(row);
}

} // namespace orvane::KeyboardShortcuts
