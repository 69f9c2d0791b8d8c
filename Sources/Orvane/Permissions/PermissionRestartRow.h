// Offers a new process when a permission has been granted and this process hasn't noticed.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"
#include "OrvaneCore/Permissions/SystemPermission.h"
#include "OrvaneKit/Model/OrvaComposite.h"

#include <memory>

namespace orvane {

class PermissionManager;

/// A row for cards, below the rows of permissions. Shown while one of the permissions is missing and a new
/// start may be what it needs; without a manager it is always shown.
struct PermissionRestartRow {
    QList<SystemPermission> permissions;
    std::shared_ptr<PermissionManager> manager;

    [[nodiscard]] AnyView body() const;
    [[nodiscard]] QList<AnyView> children() const { return {body()}; }
};

} // namespace orvane
