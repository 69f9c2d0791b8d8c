// A log that keeps its entries.
#pragma once

#include "Platform/LogSink.h"

#include <QStringList>

#include <mutex>
#include <vector>

namespace orvane {

class FakeLogSink : public LogSink {
public:
    struct Entry {
        LogLevel level;
        QString subsystem;
        QString category;
        QString message;
        bool operator==(const Entry&) const = default;
    };

    void write(LogLevel level, const QString& subsystem, const QString& category,
               const QString& message) override
    {
        const std::scoped_lock lock(m_mutex);
        m_entries.push_back({level, subsystem, category, message});
    }

    [[nodiscard]] std::vector<Entry> entries() const
    {
        const std::scoped_lock lock(m_mutex);
        return m_entries;
    }

    [[nodiscard]] QStringList messages() const
    {
        QStringList list;
        for (const auto& entry : entries())
            list.append(entry.message);
        return list;
    }

private:
    mutable std::mutex m_mutex;
    std::vector<Entry> m_entries;
};

} // namespace orvane
