// The Linux layer's taps on the private desktop, with its keyboard and a window that has the focus.
#pragma once

#include "Contract/EventTapSupport.h"
#include "Desktop/Support/Hardware.h"
#include "Desktop/Support/KeyWindow.h"
#include "Desktop/Support/OtherClient.h"
#include "Fakes/FakeLogSink.h"
#include "PlatformLinux/EventTap/XInputEventTaps.h"
#include "Support/Eventually.h"

#include <QDir>
#include <QFile>
#include <QSet>

#include <atomic>

#include <gmock/gmock.h>

namespace orvane::tests {

class EventTapFixture : public ::testing::Test {
protected:
    ~EventTapFixture() override
    {
        // Keys of one test must not be down in the next one.
        EXPECT_TRUE(eventually(10s, [this] { return other.keysDown().isEmpty(); }));
    }

    /// Returns the ids of the threads that have begun since, without those of the toolkit, which have names.
    /// A thread that was joined is listed for a moment more, so their number tells nothing.
    static QSet<QString> threadsSince(const QSet<QString>& before = {})
    {
        const QString tasks = QStringLiteral("/proc/self/task");
        const auto name = [](const QString& path) {
            QFile file(path + QStringLiteral("/comm"));
            return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        };
        const QByteArray unnamed = name(QStringLiteral("/proc/self"));
        QSet<QString> threads;
        for (const QString& thread : QDir(tasks).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            if (name(tasks + QLatin1Char('/') + thread) == unnamed)
                threads.insert(thread);
        }
        return threads - before;
    }
    /// Waits until the window has got this many keys and returns them.
    QStringList keysOnce(qsizetype count)
    {
        EXPECT_TRUE(eventually(10s, [&] { return window.keys().size() >= count; }));
        return window.keys();
    }

    std::atomic<CommandKeys> commandKeys{CommandKeys::control};
    FakeLogSink log;
    OtherClient other;
    KeyWindow window;
    XInputEventTaps taps{log, [this] { return commandKeys.load(); }};
    Hardware hardware;
};

/// Super+C becomes Control+C.
inline bool superCIsControlC(Event& event)
{
    if (event.keycode == 8 && (event.flags & eventFlag::command) != 0)
        event.flags ^= eventFlag::control | eventFlag::command;
    return true;
}

} // namespace orvane::tests
