// The defaults file on the disk: reading it as it is, whoever wrote it, and merging changes into it. Several
// processes may share it: they take turns by a lock (flock) on its folder. Knows no log. One thread at a
// time.
#pragma once

#include <QJsonObject>
#include <QMap>
#include <QString>

namespace orvane {

class DefaultsFile {
public:
    /// Invalid is what was read in full and is no defaults file, or can't ever be one, as a folder.
    /// Unreachable is what couldn't be opened or read now and may be good.
    enum class Content { missing, valid, invalid, unreachable };

    struct Reading {
        Content content = Content::missing;
        QJsonObject values; // when valid
        QString problem;    // when invalid or unreachable
        int error = 0;      // the errno, when unreachable
    };

    /// New values by key; an undefined one removes the key.
    using Changes = QMap<QString, QJsonValue>;

    /// What to do while another process has its turn.
    enum class Turn { wait, take };

    enum class Outcome {
        done,
        busy,   // another process has its turn; nothing was done
        failed, // by what may pass: a full disk, too many open files
        refused // by somebody's decision: a read-only file, a folder without permission
    };

    struct Result {
        Outcome outcome = Outcome::done;
        QJsonObject values; // what is in the file now, when done
        QString problem;    // when failed or refused, and why something was set aside
        QString setAsideAs; // the new path of an invalid file that was renamed
    };

    explicit DefaultsFile(QString path) : m_path(std::move(path)) {}

    [[nodiscard]] const QString& path() const { return m_path; }

    /// A file that isn't there, or a link to none, is missing. Never blocks on what isn't a plain file.
    [[nodiscard]] Reading read() const;

    /// Applies the changes to the file as it is now and replaces it, unless that changes nothing. In place of
    /// a missing file one with `known` and the changes is written, and so in place of an invalid one, which
    /// is renamed to "<path>.corrupt-<UTC time>" before. Never throws, never writes over what it couldn't
    /// read.
    [[nodiscard]] Result merge(const Changes& changes, const QJsonObject& known, Turn turn);

private:
    Result mergeInTurn(const Changes& changes, const QJsonObject& known);
    void removeLeftovers();
    void write(const QJsonObject& values) const;
    [[nodiscard]] QString setAside() const;

    QString m_path;
    bool m_leftoversAreRemoved = false;
};

} // namespace orvane
