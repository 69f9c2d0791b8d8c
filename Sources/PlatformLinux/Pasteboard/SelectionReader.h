// Reads the clipboard of other programs, one read after the other: the owner's targets, then each flavour
// that is wanted, whole or in pieces. Never blocks; it is driven by events and by its deadline.
#pragma once

#include "PlatformLinux/Pasteboard/PasteboardState.h"
#include "PlatformLinux/Pasteboard/PasteboardTargets.h"
#include "PlatformLinux/Pasteboard/SelectionRequests.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>

namespace orvane {

class SelectionReader {
public:
    using Time = std::chrono::steady_clock::time_point;
    using Answer = std::function<void(std::optional<SelectionContents>)>;

    /// An owner that is silent for this time doesn't answer. A picture may have to be encoded first, and most
    /// programs do that when they are asked.
    static constexpr std::chrono::milliseconds longestSilence{1000};
    static constexpr std::chrono::milliseconds longestWriting{
        5000}; // of a text that is made when it's asked for
    static constexpr std::chrono::milliseconds longestEncoding{10'000};
    /// No read takes longer in all.
    static constexpr std::chrono::seconds longestRead{30};
    /// For all flavours of a read together.
    static constexpr qsizetype largestRead = qsizetype{64} << 20;

    SelectionReader(SelectionRequests& connection, const PasteboardState& state,
                    qsizetype sizeLimit = largestRead);
    /// Completes the reads that are left with nothing.
    ~SelectionReader();
    SelectionReader(const SelectionReader&) = delete;
    SelectionReader& operator=(const SelectionReader&) = delete;

    void add(std::uint64_t id, QStringList types, Answer answer);
    void cancel(std::uint64_t id);

    void handle(const xcb_selection_notify_event_t& event);
    void handle(const xcb_property_notify_event_t& event);
    /// What is being read is outdated: begins again with the new owner.
    void ownerChanged();
    /// To be called when content of our own is complete.
    void writingFinished();

    [[nodiscard]] std::optional<Time> deadline() const;
    void handleDeadline(Time now);

private:
    struct Job {
        std::uint64_t id;
        QStringList types;
        Answer answer;
        std::optional<Time> end; // set when it begins
    };
    enum class Phase { idle, awaitsWriting, awaitsAnswer, awaitsPieces };
    /// The targets are asked for before the first step.
    static constexpr std::size_t beforeSteps = static_cast<std::size_t>(-1);

    void beginNext();
    void begin(Job& job);
    void convert(const TargetName& target);
    void tryNextTarget();
    void nextStep();
    void refused();
    void received(const QByteArray& bytes, std::uint8_t format);
    void receivedTargets(const QByteArray& bytes, std::uint8_t format);
    [[nodiscard]] std::vector<xcb_atom_t> withoutTooMany(std::vector<xcb_atom_t> atoms);
    void finish(std::optional<SelectionContents> contents);
    void answerFirst(std::optional<SelectionContents> contents);
    void complete();
    void drop();
    void noteProgress();
    [[nodiscard]] std::chrono::milliseconds patience() const;

    SelectionRequests& m_connection;
    const PasteboardState& m_state;
    const qsizetype m_sizeLimit;
    const xcb_atom_t m_property;
    const xcb_atom_t m_incr;
    std::deque<Job> m_jobs;

    // The phase of the first job, when it has begun. Each job has a window of its own, so that what comes too
    // late for another one finds none.
    Phase m_phase = Phase::idle;
    xcb_window_t m_window = XCB_WINDOW_NONE;
    xcb_atom_t m_target = XCB_ATOM_NONE;
    TargetName m_targetName;
    std::vector<ReadStep> m_steps;
    std::size_t m_step = beforeSteps;
    std::size_t m_alternative = 0;
    SelectionContents m_read;
    QByteArray m_pieces;
    qsizetype m_size = 0;
    Time m_silentUntil;
};

} // namespace orvane
