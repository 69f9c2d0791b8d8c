// Another program that owns the clipboard and behaves well or badly: a client of the X server on a separate
// thread. It ends as a program does: the connection closes.
#pragma once

#include <QByteArray>
#include <QMap>

#include <atomic>
#include <thread>

namespace orvane::tests {

class SelectionOwner {
public:
    enum class Manner {
        whole,          // gives everything at once
        pieces,         // gives all but the targets piece by piece
        silent,         // answers nothing
        onlyTargets,    // answers with its targets and nothing more
        refusesData,    // gives its targets and refuses everything else
        stopsMidway,    // gives the first piece and no more
        diesMidway,     // gives the first piece and ends
        takesItBack,    // deletes what it has given before it announces it
        withoutTargets, // refuses to give its targets
    };

    /// When it returns, it owns the clipboard.
    SelectionOwner(QMap<QByteArray, QByteArray> data, Manner manner,
                   qsizetype pieceSize = qsizetype{64} * 1024);
    ~SelectionOwner();
    SelectionOwner(const SelectionOwner&) = delete;
    SelectionOwner& operator=(const SelectionOwner&) = delete;

    [[nodiscard]] int requests() const { return m_requests; }
    [[nodiscard]] int piecesSent() const { return m_pieces; }

private:
    struct Client;
    void run(Client& client);

    const QMap<QByteArray, QByteArray> m_data;
    const Manner m_manner;
    const qsizetype m_pieceSize;
    std::atomic<int> m_requests{0};
    std::atomic<int> m_pieces{0};
    std::atomic<bool> m_isStopping{false};
    int m_wake[2] = {-1, -1};
    std::thread m_thread;
};

} // namespace orvane::tests
