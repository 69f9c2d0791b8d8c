// Notifications by name inside the process: the sender need not know who listens. Main thread. `post` calls
// the observers in the order in which they were added.
#pragma once

#include <QString>
#include <QVariant>

#include <functional>
#include <memory>

namespace orvane {

struct Notification {
    QString name;
    QVariantMap userInfo = {};
};

class NotificationCenter {
public:
    /// Keeps an observer in place; its end removes it. It may outlive the centre.
    class Token {
    public:
        virtual ~Token() = default;
    };

    NotificationCenter();
    ~NotificationCenter();
    NotificationCenter(const NotificationCenter&) = delete;
    NotificationCenter& operator=(const NotificationCenter&) = delete;

    [[nodiscard]] std::unique_ptr<Token> addObserver(const QString& name,
                                                     std::function<void(const Notification&)> handler);
    /// An observer removed by an earlier one's handler is not called, and neither is one added meanwhile.
    void post(const QString& name, const QVariantMap& userInfo = {});

private:
    struct State;
    std::shared_ptr<State> m_state;
};

} // namespace orvane
