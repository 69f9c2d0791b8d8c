// The identifiers of the list as a person knows them: by name and icon. Pure.
#pragma once

#include "Platform/RunningApplication.h"

#include <QList>
#include <QString>

namespace orvane {

struct ListedApp {
    QString name;
    /// Empty for programs that aren't installed.
    QString iconName;
    bool isInstalled = false;

    friend bool operator==(const ListedApp&, const ListedApp&) = default;
};

/// `identifier` may end in ".*". Where several installed programs go by it, they share the name that is known
/// for it and have the icon of the first. An identifier that nobody knows is its own name.
[[nodiscard]] ListedApp listedApp(const QString& identifier, const QList<InstalledApplication>& installed);

} // namespace orvane
