// What a status item shows, wherever it stands.
#pragma once

#include "Platform/StatusBar.h"

namespace orvane {

struct StatusItemContent {
    /// Tells the items of the process apart, from 1.
    int number = 0;
    /// Tells them apart for the desktop, from one start to the next; may be empty.
    QString autosaveName;
    double length = StatusItem::squareLength;
    TemplateImage image;
    /// Counts the images set: pictures that are drawn can't be compared.
    int imageRevision = 0;
    QString toolTip;
    bool menuAttached = false;

    /// What to call the item where it isn't drawn.
    [[nodiscard]] QString title() const
    {
        return image.accessibilityDescription.isEmpty() ? toolTip : image.accessibilityDescription;
    }
};

} // namespace orvane
