// The suite's permissions and the requests for them. Main thread; one shared instance.
//
// It has no timer: the code that shows a permission refreshes it.
#pragma once

#include "OrvaneCore/Base/Log.h"
#include "OrvaneCore/Base/Observable.h"
#include "OrvaneCore/Base/Pool.h"
#include "OrvaneCore/Permissions/SystemPermission.h"
#include "Platform/Permissions.h"

#include <QList>

#include <map>
#include <memory>

namespace orvane {

using PermissionStatuses = std::map<SystemPermission, PermissionStatus>;

class PermissionManager : public ObservableObject, public std::enable_shared_from_this<PermissionManager> {
public:
    /// Reads all statuses once.
    static std::shared_ptr<PermissionManager> make();
    /// Uses the given statuses until the next refresh.
    static std::shared_ptr<PermissionManager> make(PermissionStatuses testStatuses);

    [[nodiscard]] const PermissionStatuses& statuses() const { return m_statuses; }
    /// Returns `notDetermined` for a permission that isn't listed.
    [[nodiscard]] PermissionStatus status(SystemPermission permission) const;

    /// Tells why a permission is missing. Empty, as far as the system knows no more than that it is.
    [[nodiscard]] static Permissions::Denial denial(SystemPermission permission);
    /// True if some of these are missing and might only need a new start of the program.
    [[nodiscard]] bool restartMayHelp(const QList<SystemPermission>& permissions) const;

    /// Reads all four; announces after each, even when nothing has changed.
    void refresh();
    /// Makes the system ask the user. Returns at once; a later refresh shows the answer.
    void request(SystemPermission permission);
    void openSettings(SystemPermission permission);
    /// A text that isn't a URL opens nothing.
    static void openSettings(const QString& url);

private:
    explicit PermissionManager(PermissionStatuses statuses) : m_statuses(std::move(statuses)) {}
    void requestAutomation();
    static UnownedTask promptForAutomation(std::weak_ptr<PermissionManager> weak);

    PermissionStatuses m_statuses;
    Logger m_log = Log::make(QStringLiteral("Permissions"));
};

} // namespace orvane
