// Tells the desktop's status area from other programs on the bus: the process that owns the watcher's name,
// and those that own the name of a host. Main thread; never waits.
#pragma once

#include <QDBusConnection>
#include <QObject>

#include <cstdint>
#include <functional>
#include <optional>

namespace orvane {

class TrayHosts : public QObject {
    Q_OBJECT
public:
    explicit TrayHosts(QDBusConnection bus) : m_bus(std::move(bus)) {}

    /// Calls back later with the caller's process; with nothing when it is no part of a status area, or gone.
    /// Doesn't call any more after this object's end.
    void identify(const QString& caller, std::function<void(std::optional<std::int64_t> process)> then);

private:
    struct Inquiry;

    void askForProcess(const QString& name, const std::shared_ptr<Inquiry>& inquiry);

    QDBusConnection m_bus;
};

} // namespace orvane
