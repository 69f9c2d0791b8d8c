#include "Desktop/Support/WindowManagersWord.h"

#include <cstdlib>
#include <cstring>
#include <string_view>

#include <xcb/xcb.h>

namespace orvane::tests {

namespace {

struct Freed {
    void operator()(void* reply) const { std::free(reply); }
};

/// Returns once the server has done what was asked of it: the next client finds it so.
void synchronize(xcb_connection_t* xcb)
{
    const std::unique_ptr<xcb_get_input_focus_reply_t, Freed> done(
        xcb_get_input_focus_reply(xcb, xcb_get_input_focus(xcb), nullptr));
}

} // namespace

struct WindowManagersWord::State {
    xcb_connection_t* xcb = xcb_connect(nullptr, nullptr);
    Window root = xcb_setup_roots_iterator(xcb_get_setup(xcb)).data->root;
    xcb_atom_t name = XCB_ATOM_NONE;
    Window before = XCB_WINDOW_NONE;
};

WindowManagersWord::WindowManagersWord() : m_state(std::make_unique<State>())
{
    State& state = *m_state;
    constexpr std::string_view name("_NET_SUPPORTING_WM_CHECK");
    const std::unique_ptr<xcb_intern_atom_reply_t, Freed> atom(xcb_intern_atom_reply(
        state.xcb, xcb_intern_atom(state.xcb, 0, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr));
    state.name = atom ? atom->atom : xcb_atom_t{XCB_ATOM_NONE};
    const std::unique_ptr<xcb_get_property_reply_t, Freed> word(xcb_get_property_reply(
        state.xcb, xcb_get_property(state.xcb, 0, state.root, state.name, XCB_ATOM_WINDOW, 0, 1), nullptr));
    if (word && xcb_get_property_value_length(word.get()) == sizeof state.before)
        std::memcpy(&state.before, xcb_get_property_value(word.get()), sizeof state.before);
}

WindowManagersWord::~WindowManagersWord()
{
    restore();
    xcb_disconnect(m_state->xcb);
}

void WindowManagersWord::set(Window onWindow, Window to)
{
    xcb_change_property(m_state->xcb, XCB_PROP_MODE_REPLACE, onWindow, m_state->name, XCB_ATOM_WINDOW, 32, 1,
                        &to);
    synchronize(m_state->xcb);
}

void WindowManagersWord::remove()
{
    xcb_delete_property(m_state->xcb, m_state->root, m_state->name);
    synchronize(m_state->xcb);
}

void WindowManagersWord::restore()
{
    if (m_state->before != XCB_WINDOW_NONE)
        set(m_state->root, m_state->before);
    else
        remove();
}

WindowManagersWord::Window WindowManagersWord::makeWindow()
{
    const Window window = xcb_generate_id(m_state->xcb);
    xcb_create_window(m_state->xcb, 0, window, m_state->root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, 0,
                      0, nullptr);
    return window;
}

WindowManagersWord::Window WindowManagersWord::appear()
{
    const Window window = makeWindow();
    set(window, window);
    set(m_state->root, window);
    return window;
}

WindowManagersWord::Window WindowManagersWord::nameWindow()
{
    const Window window = makeWindow();
    set(m_state->root, window);
    return window;
}

void WindowManagersWord::markWindow(Window window)
{
    set(window, window);
}

void WindowManagersWord::die(Window window)
{
    xcb_destroy_window(m_state->xcb, window);
    synchronize(m_state->xcb);
}

} // namespace orvane::tests
