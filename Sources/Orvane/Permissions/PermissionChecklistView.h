// The second page of the first run: all permissions, refreshed while it is visible.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"
#include "OrvaneKit/Model/OrvaComposite.h"

#include <memory>

namespace orvane {

class PermissionManager;

struct PermissionChecklistView {
    std::shared_ptr<PermissionManager> permissions;

    [[nodiscard]] AnyView body() const;
    [[nodiscard]] QList<AnyView> children() const { return {body()}; }
};

} // namespace orvane
