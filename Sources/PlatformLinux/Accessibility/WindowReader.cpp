#include "PlatformLinux/Accessibility/WindowReader.h"

#include <algorithm>
#include <map>

#include <xcb/res.h>

namespace orvane {

namespace {

bool contains(const PropertyNumbers& numbers, xcb_atom_t atom)
{
    return std::ranges::find(numbers, atom) != numbers.end();
}

/// The processes behind all the server's clients, in one question: asked along with the window whose program
/// is wanted, it saves a round trip.
class Processes {
public:
    explicit Processes(XExchange& exchange) : m_link(exchange.link())
    {
        const xcb_res_client_id_spec_t ofAll{XCB_NONE, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
        if (m_link.extension(xcb_res_id))
            m_cookie = xcb_res_query_client_ids(m_link.xcb(), 1, &ofAll);
    }

    void read(XExchange& exchange)
    {
        if (!m_link.extension(xcb_res_id))
            return;
        const auto reply = exchange.reply<xcb_res_query_client_ids_reply_t>(m_cookie);
        if (!reply)
            return;
        for (auto ids = xcb_res_query_client_ids_ids_iterator(reply.get()); ids.rem;
             xcb_res_client_id_value_next(&ids)) {
            if (xcb_res_client_id_value_value_length(ids.data) > 0)
                m_processes[m_link.clientOf(ids.data->spec.client)] =
                    *xcb_res_client_id_value_value(ids.data);
        }
    }

    [[nodiscard]] ProgramId programOf(xcb_window_t window) const
    {
        const std::uint32_t client = m_link.clientOf(window);
        const auto found = m_processes.find(client);
        return found == m_processes.end() ? ProgramId{.client = client} : ProgramId{.process = found->second};
    }

private:
    XLink& m_link;
    xcb_res_query_client_ids_cookie_t m_cookie{};
    std::map<std::uint32_t, std::int64_t> m_processes;
};

WindowState stateFrom(const XAtoms& atoms, ManagedState managed, const PropertyNumbers& states)
{
    return {// Some window managers call a window on another desktop iconic, and a rolled-up one hidden.
            .isMinimized = managed == ManagedState::iconic && contains(states, atoms.stateHidden),
            .isMaximizedHorizontally = contains(states, atoms.stateMaximizedHorizontally),
            .isMaximizedVertically = contains(states, atoms.stateMaximizedVertically),
            .isFullScreen = contains(states, atoms.stateFullScreen),
            .isShaded = contains(states, atoms.stateShaded)};
}

/// The two properties that hold the state.
class StateQuestion {
public:
    StateQuestion(XExchange& exchange, xcb_window_t window)
        : m_managed(exchange.askProperty(window, exchange.atoms().wmState, exchange.atoms().wmState)),
          m_states(exchange.askProperty(window, exchange.atoms().state, XCB_ATOM_ATOM))
    {
    }

    std::optional<WindowState> answer(XExchange& exchange)
    {
        const ManagedState managed = managedState(exchange.numbers(m_managed));
        const PropertyNumbers states = exchange.numbers(m_states);
        if (managed == ManagedState::withdrawn)
            return std::nullopt;
        return stateFrom(exchange.atoms(), managed, states);
    }

private:
    xcb_get_property_cookie_t m_managed;
    xcb_get_property_cookie_t m_states;
};

bool isOrdinary(const XAtoms& atoms, const PropertyNumbers& types)
{
    return !contains(types, atoms.windowTypeDesktop) && !contains(types, atoms.windowTypeDock);
}

xcb_get_property_cookie_t askSupported(XExchange& exchange)
{
    return exchange.askProperty(exchange.link().root(), exchange.atoms().supported, XCB_ATOM_ATOM);
}

PixelEdges edgesAt(int x, int y, int width, int height)
{
    return {x, y, x + width, y + height};
}

PixelEdges outerEdges(const xcb_get_geometry_reply_t& geometry)
{
    const int borders = 2 * geometry.border_width;
    return edgesAt(geometry.x, geometry.y, geometry.width + borders, geometry.height + borders);
}

/// Asks for everything about a window's place except its frame, for which other windows have to be asked.
class PlaceQuestion {
public:
    PlaceQuestion(XExchange& exchange, xcb_window_t window)
        : m_state(exchange, window),
          m_geometry(xcb_get_geometry(exchange.xcb(), window)),
          m_origin(xcb_translate_coordinates(exchange.xcb(), window, exchange.link().root(), 0, 0)),
          m_decoration(exchange.askProperty(window, exchange.atoms().frameExtents, XCB_ATOM_CARDINAL)),
          m_invisible(exchange.askProperty(window, exchange.atoms().gtkFrameExtents, XCB_ATOM_CARDINAL)),
          m_hints(exchange.askProperty(window, XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS)),
          m_supported(askSupported(exchange))
    {
    }

    std::optional<WindowReader::Placed> answer(XExchange& exchange)
    {
        const std::optional<WindowState> state = m_state.answer(exchange);
        const auto geometry = exchange.reply<xcb_get_geometry_reply_t>(m_geometry);
        const auto origin = exchange.reply<xcb_translate_coordinates_reply_t>(m_origin);
        WindowReader::Placed placed;
        placed.place.decoration = frameExtents(exchange.numbers(m_decoration));
        placed.place.invisible = frameExtents(exchange.numbers(m_invisible)).value_or(PixelMargins());
        placed.hints = SizeHints(exchange.numbers(m_hints));
        placed.canBePlacedByMessage =
            contains(exchange.numbers(m_supported), exchange.atoms().moveResizeWindow);
        if (!state || !geometry || !origin)
            return std::nullopt;
        placed.state = *state;
        placed.place.client = edgesAt(origin->dst_x, origin->dst_y, geometry->width, geometry->height);
        return placed;
    }

private:
    StateQuestion m_state;
    xcb_get_geometry_cookie_t m_geometry;
    xcb_translate_coordinates_cookie_t m_origin;
    xcb_get_property_cookie_t m_decoration;
    xcb_get_property_cookie_t m_invisible;
    xcb_get_property_cookie_t m_hints;
    xcb_get_property_cookie_t m_supported;
};

} // namespace

std::optional<WindowReader::Owned> WindowReader::activeWindow(XExchange& exchange)
{
    const XAtoms& atoms = exchange.atoms();
    const auto typesOf = [&](xcb_window_t window) {
        return exchange.askProperty(window, atoms.windowType, XCB_ATOM_ATOM);
    };
    const xcb_window_t guess = m_lastActive;
    const auto cookie = exchange.askProperty(exchange.link().root(), atoms.activeWindow, XCB_ATOM_WINDOW);
    const auto guessedTypesCookie = typesOf(guess);
    Processes processes(exchange);
    const PropertyNumbers active = exchange.numbers(cookie);
    PropertyNumbers types = exchange.numbers(guessedTypesCookie);
    processes.read(exchange);
    if (active.empty() || active[0] == XCB_WINDOW_NONE)
        return std::nullopt;
    m_lastActive = active[0];
    if (active[0] != guess)
        types = exchange.numbers(typesOf(active[0]));
    if (exchange.isLate())
        return std::nullopt;
    return Owned{active[0], processes.programOf(active[0]), isOrdinary(atoms, types)};
}

std::vector<xcb_window_t> WindowReader::windowsOf(XExchange& exchange, const ProgramId& program)
{
    const XAtoms& atoms = exchange.atoms();
    const xcb_window_t root = exchange.link().root();
    const auto stackingCookie = exchange.askProperty(root, atoms.clientListStacking, XCB_ATOM_WINDOW);
    const auto listCookie = exchange.askProperty(root, atoms.clientList, XCB_ATOM_WINDOW);
    Processes processes(exchange);
    std::vector<xcb_window_t> windows = exchange.numbers(stackingCookie);
    const std::vector<xcb_window_t> byAge = exchange.numbers(listCookie);
    processes.read(exchange);
    if (windows.empty())
        windows = byAge;
    std::erase_if(windows, [&](xcb_window_t window) { return processes.programOf(window) != program; });
    std::ranges::reverse(windows);

    std::vector<xcb_get_property_cookie_t> cookies;
    cookies.reserve(windows.size());
    for (const xcb_window_t window : windows)
        cookies.push_back(exchange.askProperty(window, atoms.windowType, XCB_ATOM_ATOM));
    std::vector<xcb_window_t> ordinary;
    for (std::size_t i = 0; i < windows.size(); ++i) {
        if (isOrdinary(atoms, exchange.numbers(cookies[i])))
            ordinary.push_back(windows[i]);
    }
    return ordinary;
}

std::optional<ProgramId> WindowReader::programOf(XExchange& exchange, xcb_window_t window)
{
    StateQuestion state(exchange, window);
    Processes processes(exchange);
    const bool isThere = state.answer(exchange).has_value();
    processes.read(exchange);
    return isThere ? std::optional(processes.programOf(window)) : std::nullopt;
}

std::optional<WindowState> WindowReader::state(XExchange& exchange, xcb_window_t window)
{
    return StateQuestion(exchange, window).answer(exchange);
}

std::optional<WindowReader::Placed> WindowReader::placed(XExchange& exchange, xcb_window_t window)
{
    xcb_connection_t* xcb = exchange.xcb();
    const xcb_window_t root = exchange.link().root();
    const Frame guess = m_lastFrame.window == window ? m_lastFrame : Frame{window, root, window};

    PlaceQuestion question(exchange, window);
    const auto treeCookie = xcb_query_tree(xcb, window);
    const auto topTreeCookie = xcb_query_tree(xcb, guess.top);
    const auto topGeometryCookie = xcb_get_geometry(xcb, guess.top);
    std::optional<Placed> placed = question.answer(exchange);
    const auto tree = exchange.reply<xcb_query_tree_reply_t>(treeCookie);
    const auto topTree = exchange.reply<xcb_query_tree_reply_t>(topTreeCookie);
    auto topGeometry = exchange.reply<xcb_get_geometry_reply_t>(topGeometryCookie);
    if (!placed || !tree)
        return std::nullopt;

    m_lastFrame = guess;
    if (tree->parent != guess.parent || !topTree || topTree->parent != root) {
        const std::optional<Frame> frame = findFrame(exchange, window, tree->parent);
        if (!frame)
            return std::nullopt;
        m_lastFrame = *frame;
        topGeometry = exchange.reply<xcb_get_geometry_reply_t>(xcb_get_geometry(xcb, frame->top));
    }
    if (!topGeometry)
        return std::nullopt;
    placed->place.outer = outerEdges(*topGeometry);
    placed->place.isRolledUp = placed->state.isShaded;
    return placed;
}

std::optional<WindowReader::Frame> WindowReader::findFrame(XExchange& exchange, xcb_window_t window,
                                                           xcb_window_t parent)
{
    const xcb_window_t root = exchange.link().root();
    Frame frame{window, parent, window};
    while (parent != root && parent != XCB_WINDOW_NONE) {
        frame.top = parent;
        const auto tree = exchange.reply<xcb_query_tree_reply_t>(xcb_query_tree(exchange.xcb(), parent));
        if (!tree)
            return std::nullopt;
        parent = tree->parent;
    }
    return frame;
}

std::optional<QString> WindowReader::title(XExchange& exchange, xcb_window_t window)
{
    const XAtoms& atoms = exchange.atoms();
    StateQuestion state(exchange, window);
    const auto nameCookie = exchange.askProperty(window, atoms.windowName, atoms.utf8String);
    const auto oldNameCookie = exchange.askProperty(window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING);
    const bool isThere = state.answer(exchange).has_value();
    const std::string name = exchange.bytes(nameCookie);
    const std::string oldName = exchange.bytes(oldNameCookie);
    if (!isThere)
        return std::nullopt;
    return windowTitleOf(name, oldName);
}

std::optional<WindowClass> WindowReader::windowClass(XExchange& exchange, xcb_window_t window)
{
    StateQuestion state(exchange, window);
    const auto cookie = exchange.askProperty(window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING);
    const bool isThere = state.answer(exchange).has_value();
    const WindowClass read = windowClassOf(exchange.bytes(cookie));
    return isThere ? std::optional(read) : std::nullopt;
}

std::optional<WindowReader::Abilities> WindowReader::abilities(XExchange& exchange, xcb_window_t window)
{
    const XAtoms& atoms = exchange.atoms();
    StateQuestion state(exchange, window);
    const auto allowedCookie = exchange.askProperty(window, atoms.allowedActions, XCB_ATOM_ATOM);
    const auto motifCookie = exchange.askProperty(window, atoms.motifHints, atoms.motifHints);
    const bool isThere = state.answer(exchange).has_value();
    const PropertyNumbers allowed = exchange.numbers(allowedCookie);
    const MotifFunctions motif = motifFunctions(exchange.numbers(motifCookie));
    if (!isThere)
        return std::nullopt;
    // What the window manager allows counts; where it says nothing, what the window wishes.
    if (allowed.empty())
        return Abilities{motif.canClose, motif.canMaximize};
    return Abilities{.canClose = contains(allowed, atoms.actionClose),
                     .canMaximize = contains(allowed, atoms.actionMaximizeHorizontally) &&
                                    contains(allowed, atoms.actionMaximizeVertically)};
}

bool WindowReader::isSupported(XExchange& exchange, xcb_atom_t message)
{
    return contains(exchange.numbers(askSupported(exchange)), message);
}

} // namespace orvane
