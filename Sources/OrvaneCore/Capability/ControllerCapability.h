// The base of a capability that consists of a controller with its settings, and of services for as long as it
// is on. A feature states what it is, how its controller and its pane are made, and what it offers:
//
//     class LampCapability final : public ControllerCapability<LampController> {
//     public:
//         static const CapabilityMetadata& metadata();
//         const CapabilityMetadata& classMetadata() const override { return metadata(); }
//     private:
//         std::shared_ptr<LampController> makeController(const CapabilityContext& context) override;
//         AnyView makePane(const std::shared_ptr<LampController>& controller) override;
//     };
#pragma once

#include "OrvaneCore/Capability/Capability.h"
#include "OrvaneCore/Capability/ControllerService.h"

#include <memory>
#include <stdexcept>
#include <vector>

namespace orvane {

/// Main thread. Owned by a shared pointer.
template <class Controller>
class ControllerCapability : public Capability,
                             public std::enable_shared_from_this<ControllerCapability<Controller>> {
    // NOLINTNEXTLINE(bugprone-sizeof-expression): there is no size of a type that is only declared.
    static_assert(sizeof(Controller) > 0, "include its header: `makeServices` asks what it has");

public:
    /// Starts the services. When one of them can't start, its error is thrown, and those before it run until
    /// the capability is switched off. With a limitation that is thrown before anything starts.
    Task<> activate(CapabilityContext context) override
    {
        refuseHalfWork();
        m_services = makeServices(controller(context));
        for (const std::shared_ptr<BackgroundService>& service : Services(m_services))
            context.serviceHost->registerService(service);
        co_return;
    }

    /// Stops the services, the last started first. The controller stays, because its pane may still be open.
    Task<> deactivate() override
    {
        for (auto service = m_services.rbegin(); service != m_services.rend(); ++service) {
            if ((*service)->isRunning())
                (*service)->stop();
        }
        m_services.clear();
        co_return;
    }

    /// Removes the settings and the controller; the next use begins with the defaults.
    Task<> uninstall(CapabilityContext context) override
    {
        context.preferences.removeAll();
        m_controller.reset();
        co_return;
    }

    AnyView makeSettingsPane(CapabilityContext context) override { return makePane(controller(context)); }

protected:
    using Services = std::vector<std::shared_ptr<BackgroundService>>;

    /// Called once, at the first need. Makes the settings too; starts nothing.
    virtual std::shared_ptr<Controller> makeController(const CapabilityContext& context) = 0;
    virtual AnyView makePane(const std::shared_ptr<Controller>& controller) = 0;
    /// Returns the services in the order of their start. A controller that has `start` and `stop` is one
    /// service by itself.
    virtual Services makeServices(const std::shared_ptr<Controller>& controller)
    {
        if constexpr (requires {
                          controller->start();
                          controller->stop();
                      })
            return {std::make_shared<ControllerService<Controller>>(controller)};
        else
            return {};
    }

    /// Tells a person why the feature would work by half in this session; empty where it works.
    [[nodiscard]] virtual QString limitation() const { return {}; }
    /// For an `activate` that does something before its base's.
    void refuseHalfWork() const
    {
        if (const QString reason = limitation(); !reason.isEmpty())
            throw std::runtime_error(reason.toStdString());
    }

    /// Returns the controller; null before the first need.
    [[nodiscard]] const std::shared_ptr<Controller>& controller() const { return m_controller; }
    /// Returns the controller and makes it if there is none.
    const std::shared_ptr<Controller>& controller(const CapabilityContext& context)
    {
        if (!m_controller)
            m_controller = makeController(context);
        return m_controller;
    }

    /// Makes the handler of a shortcut or a menu item. It may outlive the capability and exist before the
    /// controller; it does nothing then.
    [[nodiscard]] std::function<void()> withController(std::function<void(Controller&)> use)
    {
        return [weak = this->weak_from_this(), use = std::move(use)] {
            const auto self = weak.lock();
            // A reference of its own: the action may take the controller away from the capability.
            if (const auto controller = self ? self->m_controller : nullptr)
                use(*controller);
        };
    }

private:
    std::shared_ptr<Controller> m_controller;
    Services m_services;
};

} // namespace orvane
