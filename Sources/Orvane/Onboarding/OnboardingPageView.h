// The frame of a page of the first run: title and text in the middle, content below; all of it scrolls where
// room is short.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"
#include "OrvaneKit/Model/OrvaComposite.h"

#include <QString>

namespace orvane {

struct OnboardingPage {
    QString title;
    QString text;
    double width; // the content's greatest width, in points
    AnyView content;

    [[nodiscard]] AnyView body() const;
    [[nodiscard]] QList<AnyView> children() const { return {body()}; }
};

/// Makes a scrolling ground for a page's column, which is in its middle if there is room.
struct OnboardingGround {
    double width; // of the column at most, points
    AnyView column;

    [[nodiscard]] QList<AnyView> children() const { return {column}; }
};

QWidget* makeOrvaWidget(const OnboardingGround& page);

} // namespace orvane
