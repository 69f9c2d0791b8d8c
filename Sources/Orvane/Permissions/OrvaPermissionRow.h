// The state of one permission and the ways to grant it, as a row for cards.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"
#include "OrvaneCore/Capability/Capability.h"
#include "OrvaneCore/Permissions/SystemPermission.h"
#include "OrvaneKit/Model/OrvaComposite.h"

#include <QString>

#include <memory>
#include <optional>

namespace orvane {

class PermissionManager;

/// A status symbol, name, badge of the level and note; at the trailing edge either the mark "Granted" or the
/// buttons that ask for it. Shows the last read status: the code that shows the row refreshes it.
struct OrvaPermissionRow {
    SystemPermission permission;
    std::optional<PermissionRequirement::Level> level = std::nullopt;
    QString note;
    std::shared_ptr<PermissionManager> permissions;

    [[nodiscard]] AnyView body() const;
    [[nodiscard]] QList<AnyView> children() const { return {body()}; }
};

} // namespace orvane
