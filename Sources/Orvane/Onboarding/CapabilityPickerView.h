// The last page of the first run: every capability with its switch.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"
#include "OrvaneCore/Capability/CapabilityRegistry.h"

#include <memory>

namespace orvane {

struct CapabilityCard {
    CapabilityRegistry::Entry entry;
    std::shared_ptr<CapabilityRegistry> registry;

    [[nodiscard]] QList<AnyView> children() const;
};

struct CapabilityPickerView {
    std::shared_ptr<CapabilityRegistry> registry;

    [[nodiscard]] QList<AnyView> children() const;
};

QWidget* makeOrvaWidget(const CapabilityCard& card);
QWidget* makeOrvaWidget(const CapabilityPickerView& view);

} // namespace orvane
