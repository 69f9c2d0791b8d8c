#include "PlatformLinux/X11/SessionKind.h"

#include "PlatformLinux/X11/ApplicationLink.h"

#include <algorithm>
#include <cstdlib>
#include <optional>

#include <xcb/randr.h>

namespace orvane {

namespace {

using Resources = XcbReply<xcb_randr_get_screen_resources_current_reply_t>;
using OutputInfo = XcbReply<xcb_randr_get_output_info_reply_t>;

std::vector<OutputInfo> outputInfos(XExchange& exchange, const Resources& resources)
{
    const xcb_randr_output_t* outputs = xcb_randr_get_screen_resources_current_outputs(resources.get());
    std::vector<xcb_randr_get_output_info_cookie_t> questions;
    for (int i = 0; i < xcb_randr_get_screen_resources_current_outputs_length(resources.get()); ++i)
        questions.push_back(
            xcb_randr_get_output_info(exchange.xcb(), outputs[i], resources->config_timestamp));
    std::vector<OutputInfo> infos;
    for (const auto question : questions) {
        if (auto info = exchange.reply<xcb_randr_get_output_info_reply_t>(question))
            infos.push_back(std::move(info));
    }
    return infos;
}

/// Nothing where the server is there but too late with its answer.
std::optional<SessionKind> askServer()
{
    const char* waylandDisplay = std::getenv("WAYLAND_DISPLAY");
    const std::string_view wayland = waylandDisplay ? waylandDisplay : "";
    const auto x = ApplicationLink::get();
    if (!x)
        return sessionKind({}, wayland);
    XExchange exchange = x->exchange();
    static constexpr std::string_view extension = "XWAYLAND";
    const auto question = xcb_query_extension(exchange.xcb(), extension.size(), extension.data());
    const bool hasOutputs = x->link().extension(xcb_randr_id) != nullptr;
    xcb_randr_get_screen_resources_current_cookie_t resourcesQuestion{};
    if (hasOutputs)
        resourcesQuestion = xcb_randr_get_screen_resources_current(exchange.xcb(), x->root());
    ServerTraits server{.isThere = true};
    const auto answer = exchange.reply<xcb_query_extension_reply_t>(question);
    if (!answer)
        return std::nullopt;
    server.hasXwaylandExtension = answer->present != 0;
    std::vector<OutputInfo> infos;
    if (hasOutputs) {
        const auto resources =
            exchange.reply<xcb_randr_get_screen_resources_current_reply_t>(resourcesQuestion);
        if (resources)
            infos = outputInfos(exchange, resources);
    }
    for (const OutputInfo& info : infos) {
        const auto* name = reinterpret_cast<const char*>(xcb_randr_get_output_info_name(info.get()));
        server.outputs.emplace_back(
            name, static_cast<std::size_t>(xcb_randr_get_output_info_name_length(info.get())));
    }
    return sessionKind(server, wayland);
}

} // namespace

SessionKind sessionKind(const ServerTraits& server, std::string_view waylandDisplay)
{
    if (!server.isThere)
        return waylandDisplay.empty() ? SessionKind::withoutServer : SessionKind::waylandAlone;
    const bool hasItsOutputs = std::ranges::any_of(
        server.outputs, [](std::string_view name) { return name.starts_with("XWAYLAND"); });
    return server.hasXwaylandExtension || hasItsOutputs ? SessionKind::xwayland : SessionKind::x11;
}

SessionKind sessionKind()
{
    static std::optional<SessionKind> known;
    if (known)
        return *known;
    const auto kind = askServer();
    if (kind == SessionKind::x11 || kind == SessionKind::xwayland)
        known = kind;
    return kind.value_or(SessionKind::x11);
}

} // namespace orvane
