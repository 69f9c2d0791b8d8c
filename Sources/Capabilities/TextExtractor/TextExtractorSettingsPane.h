// The settings pane of the text extractor.
#pragma once

#include "Capabilities/TextExtractor/TextExtractorController.h"
#include "OrvaneCore/Base/OrvaView.h"

namespace orvane::TextExtractorSettingsPane {

[[nodiscard]] AnyView make(const std::shared_ptr<TextExtractorController>& controller);

} // namespace orvane::TextExtractorSettingsPane
