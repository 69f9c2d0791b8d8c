// How the suite's permissions stand, and the asking for them. Main thread; one shared instance.
//
// It has no timer of its own: whoever shows a permission refreshes.
#pragma once

#include "OrvaneCore/Base/Log.h"
#include "OrvaneCore/Base/Observable.h"
#include "OrvaneCore/Base/Pool.h"
#include "OrvaneCore/Permissions/SystemPermission.h"

#include <map>
#include <memory>

namespace orvane {

using PermissionStatuses = std::map<SystemPermission, PermissionStatus>;

class PermissionManager : public ObservableObject, public std::enable_shared_from_this<PermissionManager> {
public:
    /// Reads all statuses once.
    static std::shared_ptr<PermissionManager> make();
    /// Statuses as given, until the next refresh.
    static std::shared_ptr<PermissionManager> make(PermissionStatuses testStatuses);

    [[nodiscard]] const PermissionStatuses& statuses() const { return m_statuses; }
    /// `notDetermined` for a permission that isn't listed.
    [[nodiscard]] PermissionStatus status(SystemPermission permission) const;

    /// Reads all four; announces after each, also when nothing changed.
    void refresh();
    /// Has the system ask the user. Returns at once; the answer shows in a refresh.
    void request(SystemPermission permission);
    void openSettings(SystemPermission permission);
    /// What is no URL opens nothing.
    static void openSettings(const QString& url);

private:
    explicit PermissionManager(PermissionStatuses statuses) : m_statuses(std::move(statuses)) {}
    void requestAutomation();
    static UnownedTask promptForAutomation(std::weak_ptr<PermissionManager> weak);

    PermissionStatuses m_statuses;
    Logger m_log = Log::make(QStringLiteral("Permissions"));
};

} // namespace orvane
