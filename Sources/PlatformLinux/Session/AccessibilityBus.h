// Whether the desktop's accessibility bus is enabled, kept up to date by its own signals. Main thread.
#pragma once

#include <QDBusConnection>
#include <QObject>

namespace orvane {

class AccessibilityBus : public QObject {
    Q_OBJECT
public:
    explicit AccessibilityBus(QDBusConnection session = QDBusConnection::sessionBus());

    /// The first call asks and waits, for 0.15 s at most; later ones give what is known.
    bool isEnabled();
    /// Starts it if need be. The answer of isEnabled() follows later.
    void enable();

private Q_SLOTS:
    void ask();

private:
    void listen();

    QDBusConnection m_session;
    bool m_listens = false;
    bool m_isEnabled = false;
    /// Of the last question: an earlier one's answer may come after it.
    unsigned m_question = 0;
};

} // namespace orvane
