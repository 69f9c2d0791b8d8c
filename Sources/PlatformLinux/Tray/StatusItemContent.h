// The content of a status item, wherever it is shown.
#pragma once

#include "Platform/StatusBar.h"

namespace orvane {

struct StatusItemContent {
    /// The item's number in the process, from 1.
    int number = 0;
    /// The name by which the desktop knows the item from one start to the next; may be empty.
    QString autosaveName;
    double length = StatusItem::squareLength;
    TemplateImage image;
    /// Counts the images that were set: pictures that are drawn can't be compared.
    int imageRevision = 0;
    QString toolTip;
    bool menuAttached = false;

    /// The name of the item where it isn't drawn.
    [[nodiscard]] QString title() const
    {
        return image.accessibilityDescription.isEmpty() ? toolTip : image.accessibilityDescription;
    }
};

} // namespace orvane
