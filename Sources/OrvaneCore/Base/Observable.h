// Observable values: a property that tells its subscribers of each set. Main thread.
//
// Subscribers are called in the order in which they subscribed, within the set. One that is removed while a
// value is being announced isn't called any more; one that is added meanwhile is told of the next value.
#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace orvane {

/// Keeps a subscriber in place; its end removes it. May outlive the object that was subscribed to.
class Subscription {
public:
    Subscription() = default;
    explicit Subscription(std::shared_ptr<void> guard) : m_guard(std::move(guard)) {}
    explicit operator bool() const { return m_guard != nullptr; }

private:
    std::shared_ptr<void> m_guard;
};

using Cancellables = std::vector<Subscription>;

/// A list of handlers that are called together: the base of everything that can be observed.
template <class... Args>
class Announcer {
public:
    using Handler = std::function<void(Args...)>;

    Announcer() = default;
    Announcer(const Announcer&) = delete;
    Announcer& operator=(const Announcer&) = delete;

    [[nodiscard]] Subscription subscribe(Handler handler)
    {
        auto entry = std::make_shared<Handler>(std::move(handler));
        m_handlers.push_back(entry);
        return Subscription(std::move(entry));
    }

    void announce(Args... args)
    {
        // The loop runs over a snapshot of weak references: handlers may subscribe, unsubscribe, or end this
        // object.
        const auto handlers = m_handlers;
        bool anyGone = false;
        const std::weak_ptr<int> alive = m_alive;
        for (const auto& weak : handlers) {
            if (const auto handler = weak.lock())
                (*handler)(args...);
            else
                anyGone = true;
        }
        if (anyGone && !alive.expired())
            std::erase_if(m_handlers, [](const auto& weak) { return weak.expired(); });
    }

    [[nodiscard]] std::size_t subscriberCount() const
    {
        std::size_t count = 0;
        for (const auto& weak : m_handlers)
            count += weak.expired() ? 0 : 1;
        return count;
    }

private:
    std::vector<std::weak_ptr<Handler>> m_handlers;
    std::shared_ptr<int> m_alive = std::make_shared<int>(0);
};

/// An object that may change in ways for which a view has to be redrawn.
class ObservableObject {
public:
    virtual ~ObservableObject() = default;
    ObservableObject() = default;
    ObservableObject(const ObservableObject&) = delete;
    ObservableObject& operator=(const ObservableObject&) = delete;

    /// Calls `handler` after each change, without saying which.
    [[nodiscard]] Subscription onChange(std::function<void()> handler)
    {
        return m_changes.subscribe(std::move(handler));
    }

    [[nodiscard]] std::size_t observerCount() const { return m_changes.subscriberCount(); }

protected:
    void announceChange() { m_changes.announce(); }

private:
    Announcer<> m_changes;
};

/// One observable value.
template <class T>
class Observable : public ObservableObject {
public:
    explicit Observable(T value = T{}) : m_value(std::move(value)) {}

    [[nodiscard]] const T& get() const { return m_value; }

    /// Announces every set, also of an equal value.
    void set(T value)
    {
        m_value = std::move(value);
        announceChange();
    }

    /// Calls the handler with the present value at once, then with each new one.
    [[nodiscard]] Subscription subscribe(std::function<void(const T&)> handler)
    {
        handler(T(m_value));
        return subscribeToChanges(std::move(handler));
    }

    /// Calls the handler with each new value, but not with the present one.
    [[nodiscard]] Subscription subscribeToChanges(std::function<void(const T&)> handler)
    {
        return onChange([this, handler = std::move(handler)] { handler(T(m_value)); });
    }

private:
    T m_value;
};

} // namespace orvane
