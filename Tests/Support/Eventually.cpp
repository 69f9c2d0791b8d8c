#include "Support/Eventually.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

namespace orvane::tests {

bool eventually(std::chrono::milliseconds deadline, const std::function<bool()>& condition)
{
    const QDeadlineTimer end(deadline);
    QTimer recheck; // ends a wait for events, since most conditions send none
    recheck.start(20ms);
    while (!condition()) {
        if (end.hasExpired())
            return condition();
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

} // namespace orvane::tests
