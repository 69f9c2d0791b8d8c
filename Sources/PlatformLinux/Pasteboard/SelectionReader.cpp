#include "PlatformLinux/Pasteboard/SelectionReader.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace orvane {

namespace {

constexpr const char* targetsTarget = "TARGETS";
/// More than any program offers; an endless list would mean endless names.
constexpr std::ptrdiff_t mostTargets = 512;

/// Returns the size that an owner announces before it sends piece by piece; more may come.
qsizetype announcedSize(const QByteArray& bytes)
{
    std::uint32_t size = 0;
    if (static_cast<std::size_t>(bytes.size()) >= sizeof size)
        std::memcpy(&size, bytes.constData(), sizeof size);
    return qsizetype{size};
}

} // namespace

SelectionReader::SelectionReader(SelectionRequests& connection, const PasteboardState& state,
                                 qsizetype sizeLimit)
    : m_connection(connection),
      m_state(state),
      m_sizeLimit(sizeLimit),
      m_property(connection.atom("ORVANE_PASTEBOARD")),
      m_incr(connection.atom("INCR"))
{
}

SelectionReader::~SelectionReader()
{
    drop();
    for (const Job& job : m_jobs)
        job.answer(std::nullopt);
}

void SelectionReader::add(std::uint64_t id, QStringList types, Answer answer)
{
    m_jobs.push_back({id, std::move(types), std::move(answer), std::nullopt});
    if (m_jobs.size() == 1)
        beginNext();
}

void SelectionReader::cancel(std::uint64_t id)
{
    const auto found = std::ranges::find(m_jobs, id, &Job::id);
    if (found == m_jobs.end())
        return;
    const bool isFirst = found == m_jobs.begin();
    if (isFirst)
        drop();
    m_jobs.erase(found);
    if (isFirst)
        beginNext();
}

void SelectionReader::ownerChanged()
{
    if (m_phase == Phase::idle)
        return;
    drop();
    beginNext();
}

void SelectionReader::writingFinished()
{
    if (m_phase == Phase::awaitsWriting)
        ownerChanged();
}

void SelectionReader::beginNext()
{
    while (!m_jobs.empty() && m_phase == Phase::idle)
        begin(m_jobs.front());
}

void SelectionReader::begin(Job& job)
{
    if (!job.end)
        job.end = std::chrono::steady_clock::now() + longestRead;
    if (m_state.isBeingWritten()) {
        m_phase = Phase::awaitsWriting;
        return;
    }
    if (auto own = m_state.ownContents()) {
        answerFirst(SelectionContents{.contents = ofTypes(std::move(*own), job.types)});
        return;
    }
    m_window = m_connection.createWindow();
    m_read = {};
    m_steps.clear();
    m_step = beforeSteps;
    m_size = 0;
    convert(targetsTarget);
}

void SelectionReader::convert(const TargetName& target)
{
    m_phase = Phase::awaitsAnswer;
    m_targetName = target;
    m_target = m_connection.atom(target);
    m_connection.convert(m_window, m_target, m_property);
    noteProgress();
}

void SelectionReader::handle(const xcb_selection_notify_event_t& event)
{
    if (m_phase != Phase::awaitsAnswer || event.requestor != m_window || event.target != m_target)
        return;
    if (event.property == XCB_ATOM_NONE) {
        refused();
        return;
    }
    const auto property = m_connection.takeProperty(m_window, m_property, m_sizeLimit - m_size);
    const auto isTooLarge = [&] {
        return property->type == m_incr && announcedSize(property->bytes) > m_sizeLimit - m_size;
    };
    if (!property || isTooLarge()) {
        finish(std::nullopt);
    } else if (property->type == m_incr) {
        m_phase = Phase::awaitsPieces;
        m_pieces.clear();
        noteProgress();
    } else if (property->type == XCB_ATOM_NONE) {
        refused();
    } else {
        received(property->bytes, property->format);
    }
}

void SelectionReader::handle(const xcb_property_notify_event_t& event)
{
    if (m_phase != Phase::awaitsPieces || event.window != m_window || event.atom != m_property ||
        event.state != XCB_PROPERTY_NEW_VALUE)
        return;
    const auto piece =
        m_connection.takeProperty(m_window, m_property, m_sizeLimit - m_size - m_pieces.size());
    if (!piece) {
        finish(std::nullopt);
        return;
    }
    if (piece->type == XCB_ATOM_NONE) // an old event, or another client has taken it
        return;
    noteProgress();
    if (piece->bytes.isEmpty())
        received(std::exchange(m_pieces, {}), piece->format);
    else
        m_pieces += piece->bytes;
}

/// The next target of the step may still be given.
void SelectionReader::refused()
{
    if (m_step != beforeSteps) {
        ++m_alternative;
        tryNextTarget();
    } else if (m_connection.clipboardHasOwner()) {
        // An old program that doesn't give its targets may still give text.
        m_steps = readSteps({"UTF8_STRING", "STRING"}, {pasteboardType::string});
        nextStep();
    } else {
        complete();
    }
}

void SelectionReader::received(const QByteArray& bytes, std::uint8_t format)
{
    m_size += bytes.size();
    if (m_step == beforeSteps) {
        receivedTargets(bytes, format);
        return;
    }
    takeAnswer(m_read, m_jobs.front().types, m_steps[m_step], m_targetName, bytes);
    nextStep();
}

void SelectionReader::receivedTargets(const QByteArray& bytes, std::uint8_t format)
{
    if (format != 32) {
        refused();
        return;
    }
    std::vector<xcb_atom_t> atoms(static_cast<std::size_t>(bytes.size()) / 4);
    std::copy_n(bytes.constData(), atoms.size() * 4, reinterpret_cast<char*>(atoms.data()));
    atoms = withoutTooMany(std::move(atoms));
    const QList<TargetName> targets = m_connection.names(atoms.data(), atoms.size());
    m_read.contents.types = typesOfTargets(targets);
    m_steps = readSteps(targets, m_jobs.front().types);
    nextStep();
}

/// Returns the first targets, and those of the others that mark a copy as private.
std::vector<xcb_atom_t> SelectionReader::withoutTooMany(std::vector<xcb_atom_t> atoms)
{
    if (std::ssize(atoms) <= mostTargets)
        return atoms;
    const auto firstLeftOut = atoms.begin() + mostTargets;
    std::vector<xcb_atom_t> kept(atoms.begin(), firstLeftOut);
    for (const TargetName& mark : privacyMarks()) {
        const xcb_atom_t atom = m_connection.atom(mark);
        if (std::find(firstLeftOut, atoms.end(), atom) != atoms.end())
            kept.push_back(atom);
    }
    return kept;
}

void SelectionReader::nextStep()
{
    ++m_step; // beforeSteps is the one before zero
    m_alternative = 0;
    tryNextTarget();
}

void SelectionReader::tryNextTarget()
{
    while (m_step < m_steps.size() && m_alternative >= m_steps[m_step].targets.size()) {
        ++m_step;
        m_alternative = 0;
    }
    if (m_step == m_steps.size())
        complete();
    else
        convert(m_steps[m_step].targets[m_alternative]);
}

/// The result has the count of what was read: if there had been another owner since, the server would have
/// announced it before the last answer. A copy of ours may be made and not have reached the server.
void SelectionReader::complete()
{
    m_read.contents.changeCount = m_state.changeCount();
    if (m_state.ownContents()) {
        ownerChanged();
        return;
    }
    m_read.contents = ofTypes(std::move(m_read.contents), m_jobs.front().types);
    finish(std::move(m_read));
}

void SelectionReader::finish(std::optional<SelectionContents> contents)
{
    answerFirst(std::move(contents));
    beginNext();
}

void SelectionReader::answerFirst(std::optional<SelectionContents> contents)
{
    drop();
    const Job job = std::move(m_jobs.front());
    m_jobs.pop_front();
    job.answer(std::move(contents));
}

void SelectionReader::drop()
{
    if (m_window != XCB_WINDOW_NONE)
        m_connection.destroyWindow(std::exchange(m_window, xcb_window_t{XCB_WINDOW_NONE}));
    m_phase = Phase::idle;
    m_pieces.clear();
}

void SelectionReader::noteProgress()
{
    m_silentUntil = std::chrono::steady_clock::now() + patience();
}

std::chrono::milliseconds SelectionReader::patience() const
{
    if (m_step == beforeSteps || m_steps[m_step].purpose != ReadStep::Purpose::type)
        return longestSilence;
    const QString& type = m_steps[m_step].type;
    const bool isPicture = type == pasteboardType::png || type == pasteboardType::tiff;
    return isPicture ? longestEncoding : longestWriting;
}

std::optional<SelectionReader::Time> SelectionReader::deadline() const
{
    if (m_phase == Phase::idle || m_phase == Phase::awaitsWriting)
        return std::nullopt;
    return std::min(m_silentUntil, *m_jobs.front().end);
}

void SelectionReader::handleDeadline(Time now)
{
    if (const auto end = deadline(); end && now >= *end)
        finish(std::nullopt);
}

} // namespace orvane
