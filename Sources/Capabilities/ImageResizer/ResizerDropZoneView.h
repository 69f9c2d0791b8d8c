// The place for dropped pictures: an invitation while it's empty, then a row of thumbnails. A press on one,
// or Delete, removes it.
#pragma once

#include "Capabilities/ImageResizer/ResizerModel.h"
#include "OrvaneCore/Base/OrvaView.h"

namespace orvane {

struct ResizerDropZone {
    std::shared_ptr<ResizerModel> model;
    /// A drag is over the window.
    std::shared_ptr<Observable<bool>> targeted;
};
QWidget* makeOrvaWidget(const ResizerDropZone& zone);

} // namespace orvane
