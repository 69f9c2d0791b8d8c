// The keymap of the X server and the layout in use, read when it is asked for and kept until it changes.
// Changes are announced on the application's connection; it wakes for nothing else. Main thread.
#pragma once

#include "PlatformLinux/X11/ApplicationLink.h"

#include <QObject>
#include <QTimer>

#include <memory>

class QSocketNotifier;

namespace orvane {

class KeymapReading;
class KeymapTables;

class ServerKeymap : public QObject {
    Q_OBJECT
public:
    ServerKeymap();
    ~ServerKeymap() override;

    /// Null where there is no X server, and until changed() when it doesn't answer in time. The first call
    /// after a change takes some milliseconds.
    [[nodiscard]] std::shared_ptr<const KeymapTables> tables();

Q_SIGNALS:
    /// Emitted when the keymap or the layout in use has changed: once, however many pieces the change came
    /// in.
    void changed();

private:
    void handle(const xcb_generic_event_t& event);
    void forget();

    std::shared_ptr<ApplicationLink> m_x;
    std::unique_ptr<ApplicationLink::Listener> m_listener;
    std::uint8_t m_xkbEvent = 0;
    std::shared_ptr<const KeymapTables> m_tables;
    std::unique_ptr<KeymapReading> m_lateReading;
    std::unique_ptr<QSocketNotifier> m_lateNotifier;
    QTimer m_settled;
};

} // namespace orvane
