// The guardians that programs with a tap have started, and their state.
#pragma once

#include "Support/Eventually.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QList>
#include <QString>

#include <gtest/gtest.h>

namespace orvane::tests {

class GuardianSearch {
public:
    /// Returns the guardians that this or another process has started.
    static QList<qint64> guardiansOf(qint64 process)
    {
        QList<qint64> found;
        for (const QString& thread : entries(QStringLiteral("/proc/%1/task").arg(process))) {
            for (const QByteArray& child :
                 read(QStringLiteral("/proc/%1/task/%2/children").arg(process).arg(thread)).split(' ')) {
                if (name(child.toLongLong()) == "orvane-guardian")
                    found.append(child.toLongLong());
            }
        }
        return found;
    }
    static QByteArray name(qint64 process)
    {
        return read(QStringLiteral("/proc/%1/cmdline").arg(process)).split('\0').value(0).split('/').last();
    }
    /// Returns the one guardian of a process once it is there; 0 when it doesn't come. A new one has no name
    /// yet.
    static qint64 guardianOf(qint64 process)
    {
        EXPECT_TRUE(eventually(10s, [&] { return guardiansOf(process).size() == 1; }));
        return guardiansOf(process).value(0);
    }
    static bool isAlive(qint64 process)
    {
        const QByteArray state =
            read(QStringLiteral("/proc/%1/stat").arg(process)).split(')').last().trimmed();
        return !state.isEmpty() && !state.startsWith('Z');
    }

private:
    static QByteArray read(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static QStringList entries(const QString& path)
    {
        return QDir(path).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    }
};

} // namespace orvane::tests
