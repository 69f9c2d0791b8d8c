#include "PlatformLinux/Screens/Monitors.h"

#include "PlatformLinux/X11/X11Connection.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <span>

#include <xcb/randr.h>

namespace orvane {

namespace {

/// FNV-1a.
std::uint32_t numberOf(const QByteArray& identity)
{
    std::uint32_t hash = 2166136261u;
    for (const char byte : identity)
        hash = (hash ^ static_cast<unsigned char>(byte)) * 16777619u;
    return hash ? hash : 1;
}

QByteArray nameOf(const X11Connection& x, xcb_atom_t atom)
{
    const auto cookie = xcb_get_atom_name(x.xcb(), atom);
    const XcbReply<xcb_get_atom_name_reply_t> reply(xcb_get_atom_name_reply(x.xcb(), cookie, nullptr));
    if (!reply)
        return {};
    return {xcb_get_atom_name_name(reply.get()), xcb_get_atom_name_name_length(reply.get())};
}

/// What the monitor at an output says of itself; empty when it doesn't.
QByteArray identification(const X11Connection& x, xcb_randr_output_t output)
{
    constexpr std::uint32_t longest = 128; // the first block, in words and then some
    const auto cookie =
        xcb_randr_get_output_property(x.xcb(), output, x.atom("EDID"), XCB_ATOM_ANY, 0, longest, 0, 0);
    xcb_generic_error_t* error = nullptr;
    const XcbReply<xcb_randr_get_output_property_reply_t> reply(
        xcb_randr_get_output_property_reply(x.xcb(), cookie, &error));
    const XcbReply<xcb_generic_error_t> ownedError(error);
    if (!reply)
        return {};
    return {reinterpret_cast<const char*>(xcb_randr_get_output_property_data(reply.get())),
            xcb_randr_get_output_property_data_length(reply.get())};
}

bool canTell(const X11Connection& x)
{
    const auto* extension = xcb_get_extension_data(x.xcb(), &xcb_randr_id);
    if (!extension || !extension->present)
        return false;
    const auto cookie = xcb_randr_query_version(x.xcb(), 1, 5);
    const XcbReply<xcb_randr_query_version_reply_t> version(
        xcb_randr_query_version_reply(x.xcb(), cookie, nullptr));
    return version && (version->major_version > 1 || version->minor_version >= 5);
}

struct Told {
    Monitor monitor;
    bool isPrimary = false;
};

std::vector<Told> toldByServer(const X11Connection& x)
{
    constexpr std::uint8_t activeOnes = 1;
    const auto cookie = xcb_randr_get_monitors(x.xcb(), x.root(), activeOnes);
    const XcbReply<xcb_randr_get_monitors_reply_t> reply(
        xcb_randr_get_monitors_reply(x.xcb(), cookie, nullptr));
    std::vector<Told> list;
    if (!reply)
        return list;
    for (auto at = xcb_randr_get_monitors_monitors_iterator(reply.get()); at.rem;
         xcb_randr_monitor_info_next(&at)) {
        const QByteArray name = nameOf(x, at.data->name);
        QByteArray identity = name;
        if (at.data->nOutput > 0)
            identity += identification(x, *xcb_randr_monitor_info_outputs(at.data));
        list.push_back({{.name = QString::fromUtf8(name),
                         .pixels = {{double(at.data->x), double(at.data->y)},
                                    {double(at.data->width), double(at.data->height)}},
                         .number = numberOf(identity)},
                        at.data->primary != 0});
    }
    return list;
}

std::vector<Told> toldByToolkit()
{
    std::vector<Told> list;
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect geometry = screen->geometry();
        const double scale = screen->devicePixelRatio();
        list.push_back({{.name = screen->name(),
                         .pixels = {{double(geometry.x()), double(geometry.y())},
                                    {geometry.width() * scale, geometry.height() * scale}},
                         .number = numberOf(screen->name().toUtf8() + screen->serialNumber().toUtf8())}});
    }
    return list;
}

double scaleOf(const QString& name)
{
    const QList<QScreen*> screens = QGuiApplication::screens();
    const auto found = std::ranges::find(screens, name, &QScreen::name);
    const QScreen* screen = found == screens.end() ? QGuiApplication::primaryScreen() : *found;
    return screen ? screen->devicePixelRatio() : 1;
}

} // namespace

std::vector<Monitor> readMonitors(const X11Connection* x)
{
    std::vector<Told> told = x && canTell(*x) ? toldByServer(*x) : std::vector<Told>();
    if (told.empty())
        told = toldByToolkit();
    const bool hasPrimary = std::ranges::any_of(told, &Told::isPrimary);
    const QScreen* primary = QGuiApplication::primaryScreen();
    std::stable_partition(told.begin(), told.end(), [&](const Told& one) {
        return hasPrimary ? one.isPrimary : primary && one.monitor.name == primary->name();
    });
    std::vector<Monitor> monitors;
    for (Told& one : told) {
        const bool isMirror =
            std::ranges::find(monitors, one.monitor.pixels, &Monitor::pixels) != monitors.end();
        if (isMirror)
            continue;
        one.monitor.scale = scaleOf(one.monitor.name);
        monitors.push_back(std::move(one.monitor));
    }
    return monitors;
}

} // namespace orvane
