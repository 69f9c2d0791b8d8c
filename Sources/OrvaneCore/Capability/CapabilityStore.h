// Stores which capabilities the user has enabled, and how each starts. Main thread.
#pragma once

#include "OrvaneCore/Capability/CapabilityMetadata.h"

#include <QSet>
#include <QVariant>

#include <array>

namespace orvane {

class DefaultsStore;

enum class CapabilityStartMode { automatic, manual };

inline constexpr std::array capabilityStartModeNames{
    EnumName{CapabilityStartMode::automatic, "automatic", TextSource("CoreText", "Start automatically")},
    EnumName{CapabilityStartMode::manual, "manual", TextSource("CoreText", "Start manually")},
};
constexpr const auto& enumNames(CapabilityStartMode)
{
    return capabilityStartModeNames;
}
static_assert(isInOrder<CapabilityStartMode>());

/// Kept as two whole dictionaries in the store; one of another shape counts as absent.
class CapabilityStore {
public:
    /// The store must outlive this object.
    explicit CapabilityStore(DefaultsStore& defaults) : m_defaults(defaults) {}

    [[nodiscard]] bool isEnabled(const CapabilityID& id) const;
    void setEnabled(const CapabilityID& id, bool value);
    [[nodiscard]] QSet<QString> enabledIDs() const;

    /// Returns `automatic` for an absent or unknown entry.
    [[nodiscard]] CapabilityStartMode startMode(const CapabilityID& id) const;
    void setStartMode(const CapabilityID& id, CapabilityStartMode mode);

private:
    [[nodiscard]] QVariantMap dictionary(const QString& key, QMetaType::Type valueType) const;

    DefaultsStore& m_defaults;
};

} // namespace orvane
