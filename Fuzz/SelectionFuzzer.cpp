// The clipboard's owner may send anything in any order, in one property or piece by piece: each read is
// completed once, with the wanted types only, and nothing is left over on the server.
#include "PlatformLinux/Pasteboard/SelectionReader.h"
#include "Require.h"
#include "Script.h"

#include <array>
#include <map>
#include <set>

using namespace orvane;
using orvane::fuzz::require;
using orvane::fuzz::Script;

namespace {

/// Low, so that a script can exceed it.
constexpr qsizetype sizeLimit = 1024;

const QList<QByteArray>& atomNames()
{
    static const QList<QByteArray> names{"", // 0 is no atom
                                         "INCR",
                                         "ORVANE_PASTEBOARD",
                                         "TARGETS",
                                         "UTF8_STRING",
                                         "STRING",
                                         "text/plain;charset=utf-8",
                                         "text/html",
                                         "text/x-moz-url",
                                         "text/uri-list",
                                         "x-special/gnome-copied-files",
                                         "text/rtf",
                                         "image/png",
                                         "image/tiff",
                                         "image/bmp",
                                         "image/jpeg",
                                         "x-kde-passwordManagerHint",
                                         "org.nspasteboard.ConcealedType",
                                         "ATOM"};
    return names;
}

/// A server whose properties have what the script says.
class ScriptedServer : public SelectionRequests {
public:
    ~ScriptedServer() override { require(m_windows.empty()); }

    [[nodiscard]] xcb_window_t createWindow() override
    {
        require(m_windows.empty()); // one read at a time
        m_windows.insert(++m_lastWindow);
        return m_lastWindow;
    }
    void destroyWindow(xcb_window_t window) override
    {
        require(m_windows.erase(window) == 1);
        property.reset();
    }
    [[nodiscard]] xcb_atom_t atom(const QByteArray& name) override
    {
        const auto at = atomNames().indexOf(name);
        return at > 0 ? static_cast<xcb_atom_t>(at) : xcb_atom_t{XCB_ATOM_NONE};
    }
    [[nodiscard]] QList<QByteArray> names(const xcb_atom_t* atoms, std::size_t count) override
    {
        QList<QByteArray> names;
        for (std::size_t i = 0; i < count; ++i) {
            if (atoms[i] > 0 && atoms[i] < atomNames().size())
                names.append(atomNames()[static_cast<qsizetype>(atoms[i])]);
        }
        return names;
    }
    void convert(xcb_window_t window, xcb_atom_t asked, xcb_atom_t) override
    {
        require(m_windows.contains(window));
        target = asked;
    }
    [[nodiscard]] std::optional<Property> takeProperty(xcb_window_t window, xcb_atom_t,
                                                       qsizetype limit) override
    {
        require(m_windows.contains(window) && limit >= 0 && limit <= sizeLimit);
        if (property && property->bytes.size() > limit)
            return std::nullopt;
        return std::exchange(property, std::nullopt).value_or(Property{});
    }
    [[nodiscard]] bool clipboardHasOwner() const override { return hasOwner; }

    [[nodiscard]] xcb_window_t lastWindow() const { return m_lastWindow; }

    std::optional<Property> property;
    xcb_atom_t target = XCB_ATOM_NONE;
    bool hasOwner = true;

private:
    xcb_window_t m_lastWindow = 0;
    std::set<xcb_window_t> m_windows;
};

/// Reads that were asked for, and how many answers each has got.
class Reads {
public:
    void add(SelectionReader& reader, const QStringList& types)
    {
        const std::uint64_t id = m_answers.size();
        m_answers[id] = 0;
        reader.add(id, types, [this, id, types](const std::optional<SelectionContents>& read) {
            require(++m_answers[id] == 1);
            if (read)
                check(read->contents, types);
        });
    }
    /// One that was answered already stays answered.
    void cancel(SelectionReader& reader, std::uint64_t id)
    {
        if (id >= m_answers.size())
            return;
        m_cancelled.insert(id);
        reader.cancel(id);
    }
    /// To be called when the reader is gone.
    void checkEnd() const
    {
        for (const auto& [id, count] : m_answers)
            require(count == 1 || m_cancelled.contains(id));
    }

private:
    static void check(const PasteboardContents& contents, const QStringList& types)
    {
        for (auto data = contents.data.cbegin(); data != contents.data.cend(); ++data)
            require(types.contains(data.key()) && contents.types.contains(data.key()));
        require(contents.fileURLs.isEmpty() || types.contains(pasteboardType::fileURL));
    }

    std::map<std::uint64_t, int> m_answers;
    std::set<std::uint64_t> m_cancelled;
};

class Play {
public:
    Play(Script& script, ScriptedServer& server, SelectionReader& reader, PasteboardState& state,
         Reads& reads)
        : m_script(script), m_server(server), m_reader(reader), m_state(state), m_reads(reads)
    {
    }

    void step()
    {
        switch (m_script.number<std::uint8_t>() % 10) {
        case 0:
            askForTypes();
            break;
        case 1:
            m_reads.cancel(m_reader, m_script.number<std::uint8_t>());
            break;
        case 2:
        case 3:
        case 4:
            putProperty();
            notifySelection();
            break;
        case 5:
        case 6:
            putProperty();
            notifyProperty();
            break;
        case 7:
            changeOwner();
            break;
        case 8:
            m_state.finishWriting(m_state.generation());
            m_reader.writingFinished();
            break;
        default:
            passTime();
        }
        const auto deadline = m_reader.deadline();
        require(!deadline || *deadline <= SelectionReader::Time::clock::now() + SelectionReader::longestRead);
    }

private:
    void askForTypes()
    {
        static const std::array types{pasteboardType::string, pasteboardType::url, pasteboardType::fileURL,
                                      pasteboardType::png,    pasteboardType::rtf, pasteboardType::html,
                                      pasteboardType::tiff};
        const auto bits = m_script.number<std::uint8_t>();
        QStringList wanted;
        for (std::size_t i = 0; i < types.size(); ++i) {
            if (bits & (1U << i))
                wanted.append(types[i]);
        }
        m_reads.add(m_reader, wanted);
    }

    void putProperty()
    {
        const auto form = m_script.number<std::uint8_t>();
        if (form == 0) {
            m_server.property.reset();
            return;
        }
        const QByteArray bytes = m_script.bytes(m_script.number<std::uint8_t>());
        m_server.property = {static_cast<xcb_atom_t>(form % atomNames().size()),
                             static_cast<std::uint8_t>(form & 0x80 ? 8 : 32), bytes};
    }

    void notifySelection()
    {
        const auto about = m_script.number<std::uint8_t>();
        xcb_selection_notify_event_t event{};
        event.requestor = m_server.lastWindow() - (about & 1);
        event.target = m_server.target + ((about >> 1) & 1);
        event.property = about & 4 ? xcb_atom_t{XCB_ATOM_NONE} : m_server.atom("ORVANE_PASTEBOARD");
        m_reader.handle(event);
    }

    void notifyProperty()
    {
        const auto about = m_script.number<std::uint8_t>();
        xcb_property_notify_event_t event{};
        event.window = m_server.lastWindow() - (about & 1);
        event.atom = m_server.atom("ORVANE_PASTEBOARD") + ((about >> 1) & 1);
        event.state = about & 4 ? XCB_PROPERTY_DELETE : XCB_PROPERTY_NEW_VALUE;
        m_reader.handle(event);
    }

    void changeOwner()
    {
        const auto how = m_script.number<std::uint8_t>();
        m_server.hasOwner = how & 1;
        if (how & 2) {
            m_state.claim();
            m_state.add(pasteboardType::string, "ours");
        } else {
            m_state.claimTold();
            m_state.foreignCopyTold();
        }
        m_reader.ownerChanged();
    }

    void passTime()
    {
        using namespace std::chrono_literals;
        const auto passed = m_script.number<std::uint8_t>() * 200ms;
        m_reader.handleDeadline(SelectionReader::Time::clock::now() + passed);
    }

    Script& m_script;
    ScriptedServer& m_server;
    SelectionReader& m_reader;
    PasteboardState& m_state;
    Reads& m_reads;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Script script(data, size);
    ScriptedServer server;
    PasteboardState state;
    Reads reads;
    {
        SelectionReader reader(server, state, sizeLimit);
        Play play(script, server, reader, state, reads);
        while (!script.isOver())
            play.step();
    }
    reads.checkEnd();
    return 0;
}
