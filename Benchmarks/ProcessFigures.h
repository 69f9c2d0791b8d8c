// What the kernel counts of a running process.
#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>

#include <map>

namespace processFigures {

/// Kilobytes of one field of its memory map: "Pss", "Rss", "Private_Dirty" ... "Rss" counts what is shared
/// with others as if it weren't, "Pss" by parts, so other programs of the toolkit that run meanwhile lower
/// it.
inline double kilobytes(qint64 pid, const char* field)
{
    QFile file(QStringLiteral("/proc/%1/smaps_rollup").arg(pid));
    if (file.open(QIODevice::ReadOnly)) {
        for (const QByteArray& line : file.readAll().split('\n')) {
            if (line.startsWith(QByteArray(field).append(':')))
                return line.simplified().split(' ').at(1).toDouble();
        }
    }
    qFatal("The memory can't be read");
}

/// Times that each of its threads was given the processor, by thread name.
inline std::map<QByteArray, long> switches(qint64 pid)
{
    std::map<QByteArray, long> counts;
    const QDir tasks(QStringLiteral("/proc/%1/task").arg(pid));
    for (const QString& task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile file(tasks.filePath(task + QStringLiteral("/status")));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        QByteArray name;
        for (const QByteArray& line : file.readAll().split('\n')) {
            if (line.startsWith("Name:"))
                name = line.mid(5).trimmed() + '/' + task.toLatin1();
            else if (line.contains("voluntary_ctxt_switches:"))
                counts[name] += line.split(':').at(1).trimmed().toLong();
        }
    }
    return counts;
}

} // namespace processFigures
