// Figures that the kernel keeps of a running process.
#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>

#include <map>

namespace processFigures {

/// Returns one field of the process's memory map in kilobytes: "Pss", "Rss", "Private_Dirty" ... "Rss" counts
/// memory shared with others in full and "Pss" in part, so other running programs of the toolkit lower "Pss".
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

/// Returns how often each of the threads was given the processor, by thread name.
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
