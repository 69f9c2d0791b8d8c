// A program with an event tap that changes nothing, made to be killed. Prints "ready" when the tap is in
// place.
#include "Platform/LogSink.h"
#include "PlatformLinux/EventTap/XInputEventTaps.h"

#include <QCoreApplication>
#include <QTimer>

#include <cstdio>

namespace {

class ErrorOutput : public orvane::LogSink {
public:
    void write(orvane::LogLevel, const QString&, const QString&, const QString& message) override
    {
        std::fprintf(stderr, "%s\n", qPrintable(message));
    }
};

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    ErrorOutput log;
    orvane::XInputEventTaps taps(log, [] { return orvane::CommandKeys::control; });
    constexpr orvane::EventMask mask = 0x1C00;
    const auto tap = taps.tapCreate(
        orvane::EventTaps::Location::session, orvane::EventTaps::Placement::headInsert,
        orvane::EventTaps::Options::defaultTap, mask,
        [](orvane::EventType, orvane::Event&, void*) { return orvane::EventTapDecision::pass; }, nullptr);
    if (!tap)
        return 1;
    tap->addToMainRunLoop();
    QTimer enabling; // the server may be late
    QObject::connect(&enabling, &QTimer::timeout, [&] {
        tap->enable(true);
        if (!tap->isEnabled())
            return;
        enabling.stop();
        std::puts("ready");
        std::fflush(stdout);
    });
    enabling.start(0);
    return application.exec();
}
