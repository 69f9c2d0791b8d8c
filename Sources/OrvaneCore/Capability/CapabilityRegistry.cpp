#include "OrvaneCore/Capability/CapabilityRegistry.h"

#include "OrvaneCore/Permissions/PermissionManager.h"

#include <QScopeGuard>

#include <algorithm>
#include <exception>

namespace orvane {

using Kind = CapabilityState::Kind;

CapabilityRegistry::CapabilityRegistry(std::shared_ptr<CapabilityStore> store, MakeContext makeContext)
    : m_store(std::move(store)), m_makeContext(std::move(makeContext))
{
}

void CapabilityRegistry::registerCapability(std::shared_ptr<Capability> capability)
{
    const CapabilityID id = capability->classMetadata().id;
    m_contexts.insert_or_assign(id.rawValue, m_makeContext(id));
    m_entries.append(Entry{std::move(capability), CapabilityState{}});
    announceChange();
}

QList<CapabilityRegistry::Entry> CapabilityRegistry::activeEntries() const
{
    QList<Entry> active;
    std::ranges::copy_if(m_entries, std::back_inserter(active),
                         [](const Entry& entry) { return entry.state == Kind::active; });
    return active;
}

std::optional<CapabilityContext> CapabilityRegistry::context(const CapabilityID& id) const
{
    const auto it = m_contexts.find(id.rawValue);
    return it != m_contexts.end() ? std::optional(it->second) : std::nullopt;
}

std::optional<CapabilityRegistry::Entry> CapabilityRegistry::entry(const CapabilityID& id) const
{
    const auto it = std::ranges::find_if(m_entries, [&](const Entry& entry) { return entry.id() == id; });
    return it != m_entries.end() ? std::optional(*it) : std::nullopt;
}

CapabilityState CapabilityRegistry::state(const CapabilityID& id) const
{
    const auto found = entry(id);
    return found ? found->state : CapabilityState{};
}

bool CapabilityRegistry::isActive(const CapabilityID& id) const
{
    return state(id) == Kind::active;
}

Task<> CapabilityRegistry::setEnabled(bool value, CapabilityID id)
{
    const auto found = entry(id);
    if (!found)
        co_return;
    const auto foundContext = context(id);
    if (!foundContext)
        co_return;
    if (value)
        co_await enable(*found, *foundContext);
    else
        co_await disable(*found, *foundContext);
}

Task<> CapabilityRegistry::disable(Entry entry, CapabilityContext context)
{
    const CapabilityID id = entry.id();
    m_store->setEnabled(id, false);
    co_await entry.capability->deactivate();
    context.serviceHost->stopAll();
    if (context.serviceHost->runningCount() >= 1) {
        context.logger.fault(
            QStringLiteral("Capability %1 left services running after deactivate").arg(id.rawValue));
    }
    updateState(id, {Kind::installed});
}

Task<> CapabilityRegistry::enable(Entry entry, CapabilityContext context)
{
    const CapabilityID id = entry.id();
    m_store->setEnabled(id, true);
    if (!permissionsSatisfied(*entry.capability)) {
        updateState(id, {Kind::needsPermission});
        co_return;
    }
    try {
        if (state(id) == Kind::disabled) {
            co_await entry.capability->install(context);
            updateState(id, {Kind::installed});
        }
        co_await entry.capability->activate(context);
        updateState(id, {Kind::active});
    } catch (const std::exception& error) {
        const QString description = QString::fromUtf8(error.what());
        context.logger.error(QStringLiteral("activate failed: %1").arg(description));
        updateState(id, CapabilityState::failed(description));
    }
}

Task<> CapabilityRegistry::uninstall(CapabilityID id)
{
    const auto found = entry(id);
    if (!found)
        co_return;
    auto foundContext = context(id);
    if (!foundContext)
        co_return;
    co_await found->capability->deactivate();
    foundContext->serviceHost->stopAll();
    try {
        co_await found->capability->uninstall(*foundContext);
    } catch (const std::exception&) {
        // The capability is off for the user either way, and nobody waits for the error.
    }
    m_store->setEnabled(id, false);
    updateState(id, {Kind::disabled});
}

Task<> CapabilityRegistry::restorePersistedState()
{
    const QList<Entry> snapshot = m_entries;
    for (const Entry& entry : snapshot) {
        const CapabilityID& id = entry.id();
        if (m_store->isEnabled(id) && m_store->startMode(id) != CapabilityStartMode::manual)
            co_await setEnabled(true, id);
    }
}

Task<> CapabilityRegistry::reevaluatePermissionGated()
{
    const QList<Entry> snapshot = m_entries;
    for (const Entry& entry : snapshot) {
        const CapabilityID id = entry.id();
        // The present state: while an entry before this one was tried, another call may have tried this one.
        if (state(id) != Kind::needsPermission || !m_store->isEnabled(id) ||
            m_beingTried.contains(id.rawValue))
            continue;
        m_beingTried.insert(id.rawValue);
        const auto isTried = qScopeGuard([&] { m_beingTried.remove(id.rawValue); });
        co_await setEnabled(true, id);
    }
}

CapabilityStartMode CapabilityRegistry::startMode(const CapabilityID& id) const
{
    return m_store->startMode(id);
}

void CapabilityRegistry::setStartMode(CapabilityStartMode mode, const CapabilityID& id)
{
    m_store->setStartMode(id, mode);
    announceChange(); // the mode is stored in no entry
}

bool CapabilityRegistry::permissionsSatisfied(const Capability& capability) const
{
    const auto found = context(capability.classMetadata().id);
    if (!found)
        return false;
    const QList<SystemPermission> required = capability.requiredPermissions();
    return std::ranges::all_of(required, [&](SystemPermission permission) {
        const auto& statuses = found->permissions->statuses();
        const auto status = statuses.find(permission);
        return status != statuses.end() && isGranted(status->second);
    });
}

void CapabilityRegistry::updateState(const CapabilityID& id, CapabilityState state)
{
    const auto it = std::ranges::find_if(m_entries, [&](const Entry& entry) { return entry.id() == id; });
    if (it == m_entries.end())
        return;
    it->state = std::move(state);
    announceChange();
}

} // namespace orvane
