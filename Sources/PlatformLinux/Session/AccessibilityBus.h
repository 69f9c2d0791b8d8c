// Knows if the desktop's accessibility bus is enabled, and is kept up to date by the bus's own signals. Main
// thread.
#pragma once

#include <QDBusConnection>
#include <QObject>

namespace orvane {

class AccessibilityBus : public QObject {
    Q_OBJECT
public:
    explicit AccessibilityBus(QDBusConnection session = QDBusConnection::sessionBus());

    /// The first call asks and waits for at most 0.15 s; later ones return what is known.
    bool isEnabled();
    /// Starts the bus if need be. The answer of isEnabled() follows later.
    void enable();

private Q_SLOTS:
    void ask();

private:
    void listen();

    QDBusConnection m_session;
    bool m_listens = false;
    bool m_isEnabled = false;
    /// The number of the last question: the answer to an earlier one may come after it.
    unsigned m_question = 0;
};

} // namespace orvane
