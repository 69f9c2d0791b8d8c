#include "PlatformLinux/Screens/Monitors.h"

#include "PlatformLinux/X11/XExchange.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <span>

#include <xcb/randr.h>

namespace orvane {

namespace {

/// Computes the FNV-1a hash.
std::uint32_t numberOf(const QByteArray& identity)
{
    std::uint32_t hash = 2166136261u;
    for (const char byte : identity)
        hash = (hash ^ static_cast<unsigned char>(byte)) * 16777619u;
    return hash ? hash : 1;
}

/// The questions for a monitor's name and its identification.
struct Question {
    Question(XExchange& exchange, const xcb_randr_monitor_info_t& monitor)
        : name(xcb_get_atom_name(exchange.xcb(), monitor.name))
    {
        constexpr std::uint32_t longest = 128; // the first block of 128 bytes fits, counted in words of four
        if (monitor.nOutput > 0) {
            identification =
                xcb_randr_get_output_property(exchange.xcb(), *xcb_randr_monitor_info_outputs(&monitor),
                                              exchange.atoms().edid, XCB_ATOM_ANY, 0, longest, 0, 0);
        }
    }

    xcb_get_atom_name_cookie_t name;
    /// Absent for a monitor without an output.
    std::optional<xcb_randr_get_output_property_cookie_t> identification;
};

QByteArray takeName(XExchange& exchange, const Question& question)
{
    const auto reply = exchange.reply<xcb_get_atom_name_reply_t>(question.name);
    if (!reply)
        return {};
    return {xcb_get_atom_name_name(reply.get()), xcb_get_atom_name_name_length(reply.get())};
}

/// Empty when the monitor doesn't say anything.
QByteArray takeIdentification(XExchange& exchange, const Question& question)
{
    const auto reply = question.identification
                           ? exchange.reply<xcb_randr_get_output_property_reply_t>(*question.identification)
                           : nullptr;
    if (!reply)
        return {};
    return {reinterpret_cast<const char*>(xcb_randr_get_output_property_data(reply.get())),
            xcb_randr_get_output_property_data_length(reply.get())};
}

struct Told {
    Monitor monitor;
    bool isPrimary = false;
};

std::vector<Told> toldByServer(XExchange& exchange)
{
    std::vector<Told> list;
    if (!exchange.link().extension(xcb_randr_id))
        return list;
    constexpr std::uint8_t activeOnes = 1;
    const auto versionCookie = xcb_randr_query_version(exchange.xcb(), 1, 5);
    const auto cookie = xcb_randr_get_monitors(exchange.xcb(), exchange.link().root(), activeOnes);
    const auto version = exchange.reply<xcb_randr_query_version_reply_t>(versionCookie);
    const auto reply = exchange.reply<xcb_randr_get_monitors_reply_t>(cookie);
    const bool canTell = version && (version->major_version > 1 || version->minor_version >= 5);
    if (!canTell || !reply)
        return list;
    std::vector<Question> questions;
    for (auto at = xcb_randr_get_monitors_monitors_iterator(reply.get()); at.rem;
         xcb_randr_monitor_info_next(&at))
        questions.emplace_back(exchange, *at.data);
    auto question = questions.cbegin();
    for (auto at = xcb_randr_get_monitors_monitors_iterator(reply.get()); at.rem;
         xcb_randr_monitor_info_next(&at), ++question) {
        const QByteArray name = takeName(exchange, *question);
        const QByteArray identity = name + takeIdentification(exchange, *question);
        list.push_back({{.name = QString::fromUtf8(name),
                         .pixels = {{double(at.data->x), double(at.data->y)},
                                    {double(at.data->width), double(at.data->height)}},
                         .number = numberOf(identity)},
                        at.data->primary != 0});
    }
    if (exchange.isLate())
        list.clear();
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

std::vector<Monitor> readMonitors(XExchange* exchange)
{
    std::vector<Told> told = exchange ? toldByServer(*exchange) : std::vector<Told>();
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
