// The frame of a page of the first run: title and text in the middle, content below, all of it scrolling
// where room is short.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"

#include <QString>

namespace orvane {

struct OnboardingPage {
    QString title;
    QString text;
    double width; // of the content at most, points
    AnyView content;

    [[nodiscard]] QList<AnyView> children() const;
};

QWidget* makeOrvaWidget(const OnboardingPage& page);

/// A scrolling ground for a page's column, which is in its middle as long as there is room.
QWidget* makeOnboardingGround(QWidget* column, double width);

} // namespace orvane
