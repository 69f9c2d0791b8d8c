// The program with the clipboard history on and a list from an earlier run, for measurements from outside.
#pragma once

#include "ProcessFigures.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>
#include <QUuid>

#include <algorithm>
#include <vector>

namespace clipboardProcess {

inline void turnFor(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

template <class Condition>
void waitFor(const char* what, Condition condition)
{
    QElapsedTimer clock;
    clock.start();
    while (!condition()) {
        if (clock.elapsed() > 30'000)
            qFatal("%s", what);
        turnFor(1);
    }
}

inline double milliseconds(const QElapsedTimer& clock)
{
    return static_cast<double>(clock.nsecsElapsed()) / 1e6;
}

inline double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

/// Returns a short paragraph, as people copy them; each is different.
inline QString paragraph(int number)
{
    return QStringLiteral("Paragraph %1: ").arg(number) +
           QStringLiteral("the quick brown fox jumps over the lazy dog. ").repeated(number % 7 + 1);
}

/// A home with the history turned on and `entries` texts in it, and the program, which ends with the object.
class Orvane {
public:
    static constexpr const char* path = ORVANE_PROGRAM;

    Orvane(int entries, int limit, const QByteArray& shortcuts = {})
    {
        write(QStringLiteral("config/orvane/defaults.json"),
              "{\"hasOnboarded\": true, \"Orvane.enabledCapabilities\": "
              "{\"net.lindenrow.orvane.clipboardhistory\": true}, "
              "\"net.lindenrow.orvane.clipboardhistory.maxItems\": " +
                  QByteArray::number(limit) + shortcuts + "}\n");
        QJsonArray list;
        for (int i = 0; i < entries; ++i) {
            list.append(QJsonObject{
                {QStringLiteral("id"), QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper()},
                {QStringLiteral("kind"), QStringLiteral("text")},
                {QStringLiteral("text"), paragraph(i)},
                {QStringLiteral("date"), 8e8 - i},
                {QStringLiteral("pinned"), false}});
        }
        if (entries > 0)
            write(historyPath(), QJsonDocument(list).toJson(QJsonDocument::Compact));
    }
    ~Orvane() { stop(); }
    Orvane(const Orvane&) = delete;
    Orvane& operator=(const Orvane&) = delete;

    void start()
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_home.filePath(QStringLiteral("config")));
        environment.insert(QStringLiteral("XDG_DATA_HOME"), m_home.filePath(QStringLiteral("data")));
        m_process.setProcessEnvironment(environment);
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(QLatin1String(path), {});
    }
    void stop()
    {
        m_process.terminate();
        if (!m_process.waitForFinished(10'000))
            m_process.kill();
        m_process.waitForFinished();
    }

    [[nodiscard]] qint64 pid() const { return m_process.processId(); }
    [[nodiscard]] bool isRunning() const { return m_process.state() == QProcess::Running; }
    [[nodiscard]] QString folder() const
    {
        return m_home.filePath(QStringLiteral("data/Orvane/net.lindenrow.orvane.clipboardhistory"));
    }
    [[nodiscard]] QString historyFile() const { return m_home.filePath(historyPath()); }
    [[nodiscard]] QByteArray history() const
    {
        QFile file(historyFile());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private:
    static QString historyPath()
    {
        return QStringLiteral("data/Orvane/net.lindenrow.orvane.clipboardhistory/history.json");
    }
    void write(const QString& name, const QByteArray& bytes)
    {
        const QString file = m_home.filePath(name);
        QDir().mkpath(QFileInfo(file).path());
        QFile target(file);
        if (!target.open(QIODevice::WriteOnly) || target.write(bytes) != bytes.size())
            qFatal("%s can't be written", qPrintable(file));
    }

    QTemporaryDir m_home;
    QProcess m_process;
};

} // namespace clipboardProcess
