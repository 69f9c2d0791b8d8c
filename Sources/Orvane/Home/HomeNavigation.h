// The page that the home window shows, and the request to show the permissions. Main thread.
#pragma once

#include "OrvaneCore/Base/Observable.h"
#include "OrvaneCore/Capability/CapabilityMetadata.h"

#include <memory>
#include <optional>
#include <variant>

namespace orvane {

/// A capability's page, or the general one.
class HomeSelection {
public:
    static HomeSelection capability(CapabilityID id) { return HomeSelection(std::move(id)); }
    static HomeSelection general() { return HomeSelection(General{}); }

    /// Null for the general page.
    [[nodiscard]] const CapabilityID* capabilityID() const { return std::get_if<CapabilityID>(&m_page); }

    friend bool operator==(const HomeSelection&, const HomeSelection&) = default;

private:
    struct General {
        friend bool operator==(const General&, const General&) = default;
    };
    using Page = std::variant<General, CapabilityID>;

    explicit HomeSelection(Page page) : m_page(std::move(page)) {}

    Page m_page;
};

class HomeNavigation {
public:
    /// Begins with the page that was shown last, also in an earlier run, and keeps it stored.
    [[nodiscard]] static std::shared_ptr<HomeNavigation> remembered();

    Observable<std::optional<HomeSelection>> selection;
    /// Grows by one each time that the permissions have to be shown.
    Observable<int> focusPermissions;

    /// Shows the general page, scrolled to its permissions.
    void showPermissions()
    {
        selection.set(HomeSelection::general());
        focusPermissions.set(focusPermissions.get() + 1);
    }

private:
    Cancellables m_memory;
};

} // namespace orvane
