#include "Orvane/Home/HomeNavigation.h"

#include "Platform/DefaultsStore.h"
#include "Platform/Platform.h"

namespace orvane {

namespace {

const QString pageKey = QStringLiteral("app.homePage");
const QString generalPage = QStringLiteral("general");

} // namespace

/// A page whose capability is unknown stays stored: the view shows another one meanwhile.
std::shared_ptr<HomeNavigation> HomeNavigation::remembered()
{
    auto navigation = std::make_shared<HomeNavigation>();
    const QString page = platform().standardDefaults.object(pageKey).toString();
    if (!page.isEmpty() && page != generalPage)
        navigation->selection.set(HomeSelection::capability({page}));
    navigation->m_memory.push_back(
        navigation->selection.subscribeToChanges([](const std::optional<HomeSelection>& selection) {
            const CapabilityID* id = selection ? selection->capabilityID() : nullptr;
            platform().standardDefaults.set(pageKey, id ? id->rawValue : generalPage);
        }));
    return navigation;
}

} // namespace orvane
