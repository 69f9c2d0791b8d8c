// A separate defaults file for each test, with a log that keeps its entries and a run loop turned by hand.
#pragma once

#include "Fakes/FakeClock.h"
#include "Fakes/FakeLogSink.h"
#include "Fakes/FakeRunLoop.h"
#include "PlatformLinux/Defaults/JsonDefaultsStore.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

namespace orvane::tests {

class DefaultsFixture : public ::testing::Test {
protected:
    std::unique_ptr<JsonDefaultsStore> open()
    {
        return std::make_unique<JsonDefaultsStore>(path, log, runLoop);
    }

    static QByteArray contentOf(const QString& file)
    {
        QFile reading(file);
        return reading.open(QIODevice::ReadOnly) ? reading.readAll() : QByteArray();
    }
    QByteArray content() const { return contentOf(path); }

    static void write(const QString& file, const QByteArray& bytes)
    {
        QDir().mkpath(QFileInfo(file).path());
        QFile writing(file);
        ASSERT_TRUE(writing.open(QIODevice::WriteOnly | QIODevice::Truncate));
        ASSERT_EQ(writing.write(bytes), bytes.size());
    }
    void writeFile(const QByteArray& bytes) { write(path, bytes); }

    /// Returns the names beside the file that begin with its name and `ending`.
    QStringList beside(const QString& ending) const
    {
        const QFileInfo info(path);
        QStringList names;
        const auto all = QDir(info.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System);
        for (const QString& name : all) {
            if (name.startsWith(info.fileName() + ending) && name != QLatin1String(".") &&
                name != QLatin1String(".."))
                names.append(name);
        }
        return names;
    }
    QStringList setAside() const { return beside(QStringLiteral(".corrupt-")); }
    QStringList journals() const { return beside(QStringLiteral(".pending-")); }
    QString inFolder(const QString& name) const { return QFileInfo(path).path() + u'/' + name; }

    QTemporaryDir directory;
    QString path = directory.path() + QLatin1String("/orvane/defaults.json");
    FakeLogSink log;
    FakeClock clock;
    FakeRunLoop runLoop{clock};
};

} // namespace orvane::tests
