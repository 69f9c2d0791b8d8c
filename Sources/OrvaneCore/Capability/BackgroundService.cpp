#include "OrvaneCore/Capability/BackgroundService.h"

#include <algorithm>

namespace orvane {

void ServiceHost::registerService(std::shared_ptr<BackgroundService> service)
{
    service->start();
    m_services.push_back(std::move(service));
}

void ServiceHost::stopAll()
{
    const auto services = m_services; // a service may call its host while it stops
    for (auto it = services.rbegin(); it != services.rend(); ++it)
        (*it)->stop();
    m_services.clear();
}

int ServiceHost::runningCount() const
{
    return static_cast<int>(
        std::ranges::count_if(m_services, [](const auto& service) { return service->isRunning(); }));
}

} // namespace orvane
