// A separate defaults file for each test, with a log that keeps its entries.
#pragma once

#include "Fakes/FakeLogSink.h"
#include "PlatformLinux/Defaults/JsonDefaultsStore.h"
#include "Support/Eventually.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

#include <sys/stat.h>
#include <unistd.h>

namespace orvane::tests {

class DefaultsFixture : public ::testing::Test {
protected:
    /// The end of a store writes what is unsaved, so what a temporary one set is in the file afterwards.
    std::unique_ptr<JsonDefaultsStore> open() { return std::make_unique<JsonDefaultsStore>(path, log, pace); }

    static QByteArray contentOf(const QString& file)
    {
        QFile reading(file);
        return reading.open(QIODevice::ReadOnly) ? reading.readAll() : QByteArray();
    }
    [[nodiscard]] QByteArray content() const { return contentOf(path); }

    static void write(const QString& file, const QByteArray& bytes)
    {
        QDir().mkpath(QFileInfo(file).path());
        QFile writing(file);
        ASSERT_TRUE(writing.open(QIODevice::WriteOnly | QIODevice::Truncate));
        ASSERT_EQ(writing.write(bytes), bytes.size());
    }
    void writeFile(const QByteArray& bytes) { write(path, bytes); }

    /// Returns the names beside the file that begin with its name and `ending`.
    [[nodiscard]] QStringList beside(const QString& ending) const
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
    [[nodiscard]] QStringList setAside() const { return beside(QStringLiteral(".corrupt-")); }
    [[nodiscard]] bool isLogged(const char* text) const
    {
        return log.messages().join(u'\n').contains(QString::fromUtf8(text));
    }
    /// Waits until the file contains the text.
    [[nodiscard]] bool isWritten(const char* text) const
    {
        return eventually(10s, [&] { return content().contains(text); });
    }

    /// Gives the folder and its content to the unprivileged user of a child.
    void giveFolderAway() const
    {
        if (::geteuid() != 0)
            return;
        for (const QString& each : {directory.path(), QFileInfo(path).path(), path})
            ASSERT_EQ(::lchown(QFile::encodeName(each).constData(), 65534, 65534), 0);
    }

    static bool changeMode(const QString& file, mode_t mode)
    {
        return ::chmod(QFile::encodeName(file).constData(), mode) == 0;
    }

    [[nodiscard]] QString inFolder(const QString& name) const { return QFileInfo(path).path() + u'/' + name; }

    QTemporaryDir directory;
    QString path = directory.path() + QLatin1String("/orvane/defaults.json");
    FakeLogSink log;
    JsonDefaultsStore::Pace pace;
};

} // namespace orvane::tests
