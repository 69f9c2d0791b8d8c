// The defaults file on the disk: reads it in whatever state it is, and merges changes into it. Several
// processes may share it: they take turns by a lock (flock) on its folder. Has no log. One thread at a time.
#pragma once

#include <QJsonObject>
#include <QMap>
#include <QString>

namespace orvane {

class DefaultsFile {
public:
    /// Invalid content was read in full and is no defaults file, or can never be one, such as a folder.
    /// Unreachable content couldn't be opened or read now and may be good.
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
        failed, // for a cause that may pass: a full disk, too many open files
        refused // by a person's decision: a read-only file, a folder without permission
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

    /// Applies the changes to the file as it is now and replaces it, unless that changes nothing. A missing
    /// file is replaced by one with `known` and the changes, and so is an invalid one, which is first renamed
    /// to "<path>.corrupt-<UTC time>". Never throws, never writes over content that it couldn't read.
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
