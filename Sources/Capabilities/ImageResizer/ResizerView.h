// The content of the resizer's window.
#pragma once

#include "Capabilities/ImageResizer/ResizerDropZoneView.h"
#include "OrvaneKit/Model/OrvaComposite.h"

namespace orvane {

class ResizerModel;

/// Takes files that are dropped anywhere on it.
struct ResizerView {
    std::shared_ptr<ResizerModel> model;
    std::shared_ptr<Observable<bool>> targeted = std::make_shared<Observable<bool>>(false);

    /// Settings and thumbnails, which scroll.
    [[nodiscard]] AnyView page() const;
    /// What the batch does, and the buttons.
    [[nodiscard]] AnyView footer() const;
    [[nodiscard]] QList<AnyView> children() const { return {page(), footer()}; }
};
QWidget* makeOrvaWidget(const ResizerView& view);

/// How far a batch has come.
struct ResizerProgressBar {
    std::shared_ptr<ResizerModel> model;
};
QWidget* makeOrvaWidget(const ResizerProgressBar& bar);

} // namespace orvane
