// How one permission stands, and the ways to it. A row for cards.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"
#include "OrvaneCore/Capability/Capability.h"
#include "OrvaneCore/Permissions/SystemPermission.h"

#include <QString>

#include <memory>
#include <optional>

namespace orvane {

class PermissionManager;

/// A status symbol, name, badge of the level and note; at the trailing edge either the mark "Granted" or the
/// buttons that ask for it. Shows what was read last: whoever shows it refreshes.
struct OrvaPermissionRow {
    SystemPermission permission;
    std::optional<PermissionRequirement::Level> level = std::nullopt;
    QString note;
    std::shared_ptr<PermissionManager> permissions;

    [[nodiscard]] QList<AnyView> children() const;
};

QWidget* makeOrvaWidget(const OrvaPermissionRow& row);

} // namespace orvane
