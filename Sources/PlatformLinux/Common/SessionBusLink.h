// A separate connection to the session bus. Connecting waits for the bus daemon's greeting, so it is done on
// a pool thread; the signals come on the thread of this object. The connection is closed with the object.
#pragma once

#include <QDBusConnection>
#include <QObject>

#include <memory>
#include <optional>

namespace orvane {

class SessionBusLink : public QObject {
    Q_OBJECT
public:
    explicit SessionBusLink(QObject* parent = nullptr);
    ~SessionBusLink() override;

    /// Leads later to ready() or failed().
    void open();
    /// May be called only after ready().
    [[nodiscard]] QDBusConnection& bus() { return *m_bus; }
    [[nodiscard]] bool isOpen() const { return m_bus.has_value(); }

Q_SIGNALS:
    void ready();
    /// Emitted when there is no session bus or it refused.
    void failed();
    /// Emitted when the bus has closed the connection. It doesn't come back by itself.
    void lost();

private:
    struct Opening;
    void opened(const std::shared_ptr<Opening>& opening);

    std::shared_ptr<Opening> m_opening;
    std::optional<QDBusConnection> m_bus;
};

} // namespace orvane
