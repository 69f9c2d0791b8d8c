// The last page of the first run: every capability with its switch.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"
#include "OrvaneCore/Capability/CapabilityRegistry.h"
#include "OrvaneKit/Model/OrvaComposite.h"

#include <memory>

namespace orvane {

struct CapabilityCard {
    CapabilityRegistry::Entry entry;
    std::shared_ptr<CapabilityRegistry> registry;

    [[nodiscard]] AnyView body() const;
    [[nodiscard]] QList<AnyView> children() const { return {body()}; }
};

struct CapabilityPickerView {
    std::shared_ptr<CapabilityRegistry> registry;

    [[nodiscard]] AnyView body() const;
    [[nodiscard]] QList<AnyView> children() const { return {body()}; }
};

} // namespace orvane
