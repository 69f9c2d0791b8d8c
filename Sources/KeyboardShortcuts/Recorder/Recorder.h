// The control with which a person sets the shortcut of a name, as a view of a pane: alone, or as a row with a
// label. Main thread.
#pragma once

#include "KeyboardShortcuts/Shortcut/Name.h"
#include "KeyboardShortcuts/Shortcut/Shortcut.h"
#include "OrvaneCore/Base/OrvaView.h"

#include <QString>

#include <functional>
#include <optional>

namespace orvane::KeyboardShortcuts {

/// Called after the user has set a shortcut, or cleared it.
using RecorderChange = std::function<void(const std::optional<Shortcut>&)>;

struct Recorder {
    /// Makes a recorder without a label. If its title stands elsewhere, give it as the accessible name.
    explicit Recorder(Name shortcutName, RecorderChange changed = {});
    /// Makes a row with the title on the left.
    Recorder(const QString& title, Name shortcutName, RecorderChange changed = {});
    /// Makes a row with any view as its label.
    Recorder(AnyView theLabel, Name shortcutName, RecorderChange changed, QString theAccessibleName);

    /// Returns the label, if there is one.
    [[nodiscard]] QList<AnyView> children() const
    {
        return hasLabel ? QList<AnyView>{label} : QList<AnyView>{};
    }

    /// The text that the control shows.
    [[nodiscard]] QString text() const;
    /// Does what recording this shortcut does, or clearing if there is none, without a check.
    void set(const std::optional<Shortcut>& shortcut) const;

    Name name;
    RecorderChange onChange;
    bool hasLabel = false;
    AnyView label;
    QString accessibleName;
};

QWidget* makeOrvaWidget(const Recorder& recorder);

} // namespace orvane::KeyboardShortcuts
