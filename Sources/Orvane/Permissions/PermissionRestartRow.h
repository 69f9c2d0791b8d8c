// The way out when a permission has been given and this process hasn't noticed: a new process.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"
#include "OrvaneKit/Model/OrvaComposite.h"

namespace orvane {

/// A row for cards, under those of permissions.
struct PermissionRestartRow {
    AnyView body() const;
    QList<AnyView> children() const { return {body()}; }
};

} // namespace orvane
