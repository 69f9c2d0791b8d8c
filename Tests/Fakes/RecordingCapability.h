// A capability that records each call, and whose operations can be told to fail or to suspend.
#pragma once

#include "OrvaneCore/Capability/Capability.h"

#include <QStringList>

#include <coroutine>
#include <stdexcept>

namespace orvane {

/// Awaiting a gate suspends until the test opens it.
class Gate {
public:
    void open()
    {
        m_isOpen = true;
        if (const auto waiting = std::exchange(m_waiting, nullptr))
            waiting.resume();
    }
    void close() { m_isOpen = false; }
    [[nodiscard]] bool hasWaiter() const { return m_waiting != nullptr; }

    auto operator co_await() noexcept
    {
        struct Awaiter {
            Gate& gate;
            [[nodiscard]] bool await_ready() const noexcept { return gate.m_isOpen; }
            void await_suspend(std::coroutine_handle<> handle) noexcept { gate.m_waiting = handle; }
            void await_resume() const noexcept {}
        };
        return Awaiter{*this};
    }

private:
    bool m_isOpen = true;
    std::coroutine_handle<> m_waiting;
};

class RecordingCapability : public Capability {
public:
    explicit RecordingCapability(const QString& id, std::shared_ptr<QStringList> journal = {})
        : calls(journal ? std::move(journal) : std::make_shared<QStringList>()),
          m_metadata{.id = {id},
                     .displayName = id,
                     .summary = {},
                     .symbolName = QStringLiteral("eye"),
                     .category = CapabilityCategory::system}
    {
    }

    [[nodiscard]] const CapabilityMetadata& classMetadata() const override { return m_metadata; }
    [[nodiscard]] QList<PermissionRequirement> permissionRequirements() const override
    {
        return requirements;
    }

    QList<HotkeyAction> hotkeyActions() override
    {
        record("hotkeyActions");
        return hotkeys;
    }

    Task<> install(CapabilityContext) override
    {
        record("install");
        co_await installGate;
        throwIf(installError);
    }

    Task<> activate(CapabilityContext context) override
    {
        record("activate");
        lastContext = context;
        co_await activateGate;
        if (service)
            context.serviceHost->registerService(service);
        throwIf(activateError);
    }

    Task<> deactivate() override
    {
        record("deactivate");
        co_await deactivateGate;
    }

    Task<> uninstall(CapabilityContext) override
    {
        record("uninstall");
        throwIf(uninstallError);
        co_return;
    }

    AnyView makeSettingsPane(CapabilityContext) override
    {
        record("makeSettingsPane");
        return {};
    }
    QList<MenuBarItem> menuBarContributions() override { return contributions; }

    std::shared_ptr<QStringList> calls;
    QList<PermissionRequirement> requirements;
    QList<MenuBarItem> contributions;
    QList<HotkeyAction> hotkeys;
    std::shared_ptr<BackgroundService> service;
    std::optional<CapabilityContext> lastContext;
    QString installError;
    QString activateError;
    QString uninstallError;
    Gate installGate;
    Gate activateGate;
    Gate deactivateGate;

private:
    void record(const char* call) { calls->append(QLatin1String(call)); }
    static void throwIf(const QString& error)
    {
        if (!error.isEmpty())
            throw std::runtime_error(error.toStdString());
    }

    CapabilityMetadata m_metadata;
};

/// A service that records its starts and stops.
class RecordingService : public BackgroundService {
public:
    RecordingService(QString name, std::shared_ptr<QStringList> journal)
        : m_name(std::move(name)), m_calls(std::move(journal))
    {
    }

    void start() override
    {
        m_calls->append(QStringLiteral("start ") + m_name);
        if (!error.isEmpty())
            throw std::runtime_error(error.toStdString());
        m_isRunning = true;
    }
    void stop() override
    {
        m_calls->append(QStringLiteral("stop ") + m_name);
        m_isRunning = staysRunning;
    }
    [[nodiscard]] bool isRunning() const override { return m_isRunning; }

    QString error;
    bool staysRunning = false;

private:
    QString m_name;
    std::shared_ptr<QStringList> m_calls;
    bool m_isRunning = false;
};

} // namespace orvane
