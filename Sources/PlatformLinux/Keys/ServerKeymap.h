// The keymap of the X server and the layout in use, read when it is asked for and kept until it changes.
// Changes are announced on the application's connection; it wakes for nothing else. Main thread.
#pragma once

#include "PlatformLinux/X11/X11Connection.h"

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QTimer>

#include <memory>
#include <optional>

namespace orvane {

class KeymapTables;

class ServerKeymap : public QObject, private QAbstractNativeEventFilter {
    Q_OBJECT
public:
    ServerKeymap();
    ~ServerKeymap() override;

    /// Null where there is no X server. The first call after a change takes some milliseconds.
    std::shared_ptr<const KeymapTables> tables();

Q_SIGNALS:
    /// Emitted when the keymap or the layout in use has changed: once, however many pieces the change came
    /// in.
    void changed();

private:
    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

    std::optional<X11Connection> m_x;
    std::uint8_t m_xkbFirstEvent = 0;
    std::shared_ptr<const KeymapTables> m_tables;
    QTimer m_settled;
};

} // namespace orvane
