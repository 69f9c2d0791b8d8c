#include "Platform/NotificationCenter.h"

#include <algorithm>
#include <vector>

namespace orvane {

namespace {

struct Observer {
    QString name;
    std::function<void(const Notification&)> handler;
    bool removed = false;
};

} // namespace

struct NotificationCenter::State {
    std::vector<std::shared_ptr<Observer>> observers;
};

namespace {

template <class State>
class ObserverToken : public NotificationCenter::Token {
public:
    ObserverToken(std::weak_ptr<State> state, std::shared_ptr<Observer> observer)
        : m_state(std::move(state)), m_observer(std::move(observer))
    {
    }

    ~ObserverToken() override
    {
        m_observer->removed = true;
        if (const auto state = m_state.lock())
            std::erase(state->observers, m_observer);
    }

private:
    std::weak_ptr<State> m_state;
    std::shared_ptr<Observer> m_observer;
};

} // namespace

NotificationCenter::NotificationCenter() : m_state(std::make_shared<State>()) {}
NotificationCenter::~NotificationCenter() = default;

std::unique_ptr<NotificationCenter::Token>
NotificationCenter::addObserver(const QString& name, std::function<void(const Notification&)> handler)
{
    auto observer = std::make_shared<Observer>(Observer{name, std::move(handler)});
    m_state->observers.push_back(observer);
    return std::make_unique<ObserverToken<State>>(m_state, std::move(observer));
}

void NotificationCenter::post(const QString& name, const QVariantMap& userInfo)
{
    const Notification notification{name, userInfo};
    const auto observers = m_state->observers;
    for (const auto& observer : observers) {
        if (observer->name == name && !observer->removed)
            observer->handler(notification);
    }
}

} // namespace orvane
