// The way out when a permission has been given and this process hasn't noticed: a new process.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"

namespace orvane {

/// A row for cards, under those of permissions.
struct PermissionRestartRow {
    [[nodiscard]] QList<AnyView> children() const;
};

QWidget* makeOrvaWidget(const PermissionRestartRow& row);

} // namespace orvane
