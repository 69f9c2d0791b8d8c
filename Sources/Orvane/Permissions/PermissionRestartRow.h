// Offers a new process when a permission has been granted and this process hasn't noticed.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"
#include "OrvaneKit/Model/OrvaComposite.h"

namespace orvane {

/// A row for cards, below the rows of permissions.
struct PermissionRestartRow {
    [[nodiscard]] AnyView body() const;
    [[nodiscard]] QList<AnyView> children() const { return {body()}; }
};

} // namespace orvane
