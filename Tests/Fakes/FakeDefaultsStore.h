// A defaults store in memory.
#pragma once

#include "Platform/DefaultsStore.h"

#include <functional>

namespace orvane {

class FakeDefaultsStore : public DefaultsStore {
public:
    void registerDefaults(const QVariantMap& defaults) override
    {
        ++registrations;
        for (auto it = defaults.begin(); it != defaults.end(); ++it)
            registered.insert(it.key(), it.value());
    }

    [[nodiscard]] QVariant object(const QString& key) const override
    {
        const auto it = stored.find(key);
        return it != stored.end() ? it.value() : registered.value(key);
    }

    void set(const QString& key, const QVariant& value) override
    {
        if (onSet)
            onSet(key, value);
        if (value.isValid())
            stored.insert(key, value);
        else
            stored.remove(key);
    }

    [[nodiscard]] QVariantMap dictionaryRepresentation() const override
    {
        QVariantMap all = registered;
        for (auto it = stored.begin(); it != stored.end(); ++it)
            all.insert(it.key(), it.value());
        return all;
    }

    QVariantMap stored;
    QVariantMap registered;
    int registrations = 0;
    /// Called for each `set` before it is done.
    std::function<void(const QString& key, const QVariant& value)> onSet;
};

} // namespace orvane
