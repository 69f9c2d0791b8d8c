#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "KeyboardShortcuts/Recorder/Recorder.h"
#include "KeyboardShortcuts/Recorder/RecorderCocoaView.h"
#include "OrvaneKit/Model/OrvaRows.h"
#include "OrvaneKit/Theme/OrvaTheme.h"

#include <QHBoxLayout>

namespace orvane::KeyboardShortcuts {

namespace {

constexpr int rowH = static_cast<int>(Orva::rowH);
constexpr int rowV = static_cast<int>(Orva::rowV);
constexpr int controlGap = 16;

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
    auto* control = new RecorderCocoa(recorder.name, recorder.onChange, recorder.accessibleName);
    QWidget* label = recorder.hasLabel ? recorder.label.makeWidget() : nullptr;
    if (!label)
        return control;
    auto* row = new QWidget;
    auto* line = new QHBoxLayout(row);
    // The control has its own room for its focus ring.
    line->setContentsMargins(rowH, rowV - orvaRingMargin, rowH - orvaRingMargin, rowV - orvaRingMargin);
    line->setSpacing(controlGap);
    line->addWidget(label, 1);
    line->addWidget(control, 0, Qt::AlignVCenter);
    return row;
}

} // namespace orvane::KeyboardShortcuts
