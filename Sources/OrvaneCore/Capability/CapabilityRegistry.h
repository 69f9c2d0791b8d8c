// Owns every capability, its context and its state; nothing else calls its lifecycle operations. Main thread.
//
// An asynchronous operation suspends only inside a capability's own. Two operations on one id aren't
// serialised: each step reads the state at that step.
#pragma once

#include "OrvaneCore/Base/CapabilityState.h"
#include "OrvaneCore/Base/Observable.h"
#include "OrvaneCore/Capability/Capability.h"
#include "OrvaneCore/Capability/CapabilityStore.h"

#include <QSet>

#include <functional>
#include <memory>
#include <unordered_map>

namespace orvane {

class CapabilityRegistry : public ObservableObject {
public:
    struct Entry {
        std::shared_ptr<Capability> capability;
        CapabilityState state;

        [[nodiscard]] const CapabilityID& id() const { return metadata().id; }
        [[nodiscard]] const CapabilityMetadata& metadata() const { return capability->classMetadata(); }
    };
    using MakeContext = std::function<CapabilityContext(const CapabilityID&)>;

    CapabilityRegistry(std::shared_ptr<CapabilityStore> store, MakeContext makeContext);

    /// Appends in state `disabled`. An id registered twice gets a new context and a second entry.
    void registerCapability(std::shared_ptr<Capability> capability);

    /// Returns the entries in the order of registration, which is that of lists and menus.
    [[nodiscard]] const QList<Entry>& entries() const { return m_entries; }
    [[nodiscard]] QList<Entry> activeEntries() const;
    [[nodiscard]] std::optional<CapabilityContext> context(const CapabilityID& id) const;
    [[nodiscard]] std::optional<Entry> entry(const CapabilityID& id) const;
    /// Returns `disabled` for an unknown id.
    [[nodiscard]] CapabilityState state(const CapabilityID& id) const;
    [[nodiscard]] bool isActive(const CapabilityID& id) const;

    /// Stores the wish, then carries it out. Neither throws nor reports: the state shows the result. An
    /// unknown id changes nothing and stores nothing.
    Task<> setEnabled(bool value, CapabilityID id);
    Task<> uninstall(CapabilityID id);

    /// Called at launch: starts what is enabled and starts automatically, strictly one after the other.
    Task<> restorePersistedState();
    /// Tries again each enabled capability that waits for a permission, whatever its start mode. One that an
    /// earlier call is just trying isn't tried twice.
    Task<> reevaluatePermissionGated();

    [[nodiscard]] CapabilityStartMode startMode(const CapabilityID& id) const;
    void setStartMode(CapabilityStartMode mode, const CapabilityID& id);

    /// Uses the permissions as last read; false for a capability that isn't registered.
    [[nodiscard]] bool permissionsSatisfied(const Capability& capability) const;

private:
    void updateState(const CapabilityID& id, CapabilityState state);
    Task<> disable(Entry entry, CapabilityContext context);
    Task<> enable(Entry entry, CapabilityContext context);

    QList<Entry> m_entries;
    std::shared_ptr<CapabilityStore> m_store;
    MakeContext m_makeContext;
    std::unordered_map<QString, CapabilityContext> m_contexts;
    /// The ids that a reevaluation is just trying.
    QSet<QString> m_beingTried;
};

} // namespace orvane
