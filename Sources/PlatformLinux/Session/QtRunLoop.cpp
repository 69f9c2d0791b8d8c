#include "PlatformLinux/Session/QtRunLoop.h"

#include <QCoreApplication>
#include <QPointer>
#include <QThreadPool>
#include <QTimer>

namespace orvane {

namespace {

class QtTimer : public Timer {
public:
    QtTimer(std::chrono::milliseconds interval, RunLoop::Repeats repeats, std::function<void()> handler)
        : m_timer(new QTimer), m_handler(std::make_shared<std::function<void()>>(std::move(handler)))
    {
        m_timer->setSingleShot(repeats == RunLoop::Repeats::no);
        m_timer->setTimerType(interval >= std::chrono::minutes(1)   ? Qt::VeryCoarseTimer
                              : interval >= std::chrono::seconds(1) ? Qt::CoarseTimer
                                                                    : Qt::PreciseTimer);
        QObject::connect(m_timer, &QTimer::timeout, [handler = std::weak_ptr(m_handler)] {
            if (const auto call = handler.lock()) // keeps the handler alive: it may end its own timer
                (*call)();
        });
        m_timer->start(interval);
    }

    ~QtTimer() override
    {
        if (m_timer) {
            m_timer->stop();
            m_timer->deleteLater(); // the timer's own handler may be running
        }
    }

private:
    QPointer<QTimer> m_timer;
    std::shared_ptr<std::function<void()>> m_handler;
};

} // namespace

QtRunLoop::~QtRunLoop()
{
    QThreadPool::globalInstance()->waitForDone();
}

void QtRunLoop::perform(std::function<void()> task)
{
    QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(task), Qt::QueuedConnection);
}

void QtRunLoop::performDetached(std::function<void()> work)
{
    QThreadPool::globalInstance()->start(std::move(work));
}

std::unique_ptr<Timer> QtRunLoop::scheduleTimer(std::chrono::milliseconds interval, Repeats repeats,
                                                std::function<void()> handler)
{
    return std::make_unique<QtTimer>(interval, repeats, std::move(handler));
}

} // namespace orvane
