// Allows one running program in a session: its well-known name on the session bus, with the interface that
// desktop entries use for programs that D-Bus may activate (org.freedesktop.Application). Main thread.
#pragma once

#include "Platform/Application.h"

#include <QObject>
#include <QVariantMap>

#include <functional>
#include <memory>

namespace orvane {

class LogSink;

class SingleInstance : public QObject {
    Q_OBJECT

public:
    enum class Claim {
        claimed,     // this process is the one instance
        handedOver,  // another process is, and was told to come to the front
        leftAlone,   // another process is, and a start by the session asks nothing of it
        unanswered,  // another process is, and doesn't answer; the log says so
        unavailable, // there is no session bus; nothing stops a second process
    };

    explicit SingleInstance(LogSink& log);
    ~SingleInstance() override;

    /// Asks for the name. `activated` is called each time a person's further start reaches this process.
    Claim claim(Application::StartedBy starter, std::function<void()> activated);
    /// Gives the name up, so that a new process can have it.
    void release();

private:
    LogSink& m_log;
    std::function<void()> m_activated;
    bool m_claimed = false;

    friend class FreedesktopApplicationAdaptor;
};

} // namespace orvane
