// The second page of the first run: all permissions, followed while they are in sight.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"

#include <memory>

namespace orvane {

class PermissionManager;

struct PermissionChecklistView {
    std::shared_ptr<PermissionManager> permissions;

    [[nodiscard]] QList<AnyView> children() const;
};

QWidget* makeOrvaWidget(const PermissionChecklistView& view);

} // namespace orvane
