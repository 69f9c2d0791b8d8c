// Measures how long a program's main thread lets others wait: a thread asks it for a property over the bus
// again and again, and its main thread answers.
#pragma once

#include <QByteArrayList>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QElapsedTimer>
#include <QFile>
#include <QString>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

class MainThreadProbe {
public:
    struct Figures {
        long answers = 0;
        double median = 0;       // milliseconds
        double longest = 0;      // milliseconds
        double longestOfOwn = 0; // less the time in which the main thread was ready but had no processor
        double busiest = 0;      // processor time that the main thread had during one answer
    };

    /// `service` and `path` are those of a status item.
    MainThreadProbe(qint64 pid, QString service, QString path)
        : m_pid(pid), m_service(std::move(service)), m_path(std::move(path)), m_thread([this] { run(); })
    {
    }
    ~MainThreadProbe() { stop(); }
    MainThreadProbe(const MainThreadProbe&) = delete;
    MainThreadProbe& operator=(const MainThreadProbe&) = delete;

    Figures finish()
    {
        stop();
        Figures figures;
        figures.answers = static_cast<long>(m_times.size());
        if (m_times.empty())
            return figures;
        figures.longest = *std::max_element(m_times.begin(), m_times.end());
        figures.longestOfOwn = *std::max_element(m_ownTimes.begin(), m_ownTimes.end());
        figures.busiest = *std::max_element(m_processorTimes.begin(), m_processorTimes.end());
        std::nth_element(m_times.begin(), m_times.begin() + figures.answers / 2, m_times.end());
        figures.median = m_times[static_cast<std::size_t>(figures.answers / 2)];
        return figures;
    }

private:
    static constexpr auto pause = std::chrono::milliseconds(2);
    static constexpr int answerTime = 30'000; // milliseconds

    void stop()
    {
        {
            const std::scoped_lock lock(m_mutex);
            m_isStopping = true;
        }
        m_stopping.notify_all();
        if (m_thread.joinable())
            m_thread.join();
    }

    /// The main thread's times so far, in milliseconds.
    struct Times {
        double running = 0;
        double waiting = 0; // waiting for a processor
    };
    [[nodiscard]] Times times() const
    {
        QFile file(QStringLiteral("/proc/%1/task/%1/schedstat").arg(m_pid));
        const auto numbers = file.open(QIODevice::ReadOnly) ? file.readAll().split(' ') : QByteArrayList();
        return {numbers.value(0).toDouble() / 1e6, numbers.value(1).toDouble() / 1e6};
    }

    void run()
    {
        const QString name = QStringLiteral("main-thread-probe");
        {
            QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, name);
            QDBusMessage question = QDBusMessage::createMethodCall(
                m_service, m_path, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
            question << QStringLiteral("org.kde.StatusNotifierItem") << QStringLiteral("Title");
            std::unique_lock lock(m_mutex);
            while (!m_isStopping) {
                lock.unlock();
                const Times before = times();
                QElapsedTimer clock;
                clock.start();
                const QDBusMessage answer = bus.call(question, QDBus::Block, answerTime);
                const double time = static_cast<double>(clock.nsecsElapsed()) / 1e6;
                if (answer.type() == QDBusMessage::ReplyMessage) {
                    m_times.push_back(time);
                    const Times after = times();
                    m_ownTimes.push_back(time - (after.waiting - before.waiting));
                    m_processorTimes.push_back(after.running - before.running);
                }
                lock.lock();
                m_stopping.wait_for(lock, pause, [this] { return m_isStopping; });
            }
        }
        QDBusConnection::disconnectFromBus(name);
    }

    const qint64 m_pid;
    const QString m_service;
    const QString m_path;
    std::vector<double> m_times, m_ownTimes, m_processorTimes;
    std::mutex m_mutex;
    std::condition_variable m_stopping;
    bool m_isStopping = false;
    std::thread m_thread; // the last member: the thread uses the others
};
