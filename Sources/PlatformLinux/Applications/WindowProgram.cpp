#include "PlatformLinux/Applications/WindowProgram.h"

#include "PlatformLinux/Applications/ApplicationIdentity.h"
#include "PlatformLinux/Applications/DesktopEntries.h"

#include <QFile>
#include <QGuiApplication>
#include <QSysInfo>

#include <cstring>

#include <unistd.h>

#include <xcb/res.h>

namespace orvane {

namespace {

struct WindowClass {
    QString instance;
    QString name;
};

WindowClass classOf(const X11Connection& x, xcb_window_t window)
{
    const QList<QByteArray> parts = x.property(window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING).split('\0');
    return {QString::fromLatin1(parts.value(0)), QString::fromLatin1(parts.value(1))};
}

/// Returns what toolkits write on their windows themselves: ids of desktop entries, or the path of one.
QStringList entryIDsToldBy(const X11Connection& x, xcb_window_t window)
{
    const xcb_atom_t utf8 = x.atom("UTF8_STRING");
    QStringList ids;
    for (const char* name : {"_KDE_NET_WM_DESKTOP_FILE", "_GTK_APPLICATION_ID"}) {
        QString id = QString::fromUtf8(x.property(window, x.atom(name), utf8)).section(u'/', -1);
        if (id.endsWith(QLatin1StringView(".desktop")))
            id.chop(8);
        if (!id.isEmpty())
            ids.append(id);
    }
    return ids;
}

bool exists(const X11Connection& x, xcb_window_t window)
{
    const auto cookie = xcb_get_window_attributes(x.xcb(), window);
    xcb_generic_error_t* error = nullptr;
    const XcbReply<xcb_get_window_attributes_reply_t> reply(
        xcb_get_window_attributes_reply(x.xcb(), cookie, &error));
    const XcbReply<xcb_generic_error_t> ownedError(error);
    return reply != nullptr;
}

/// The server knows which process is at the other end, whatever the window's properties say.
std::int64_t processToldByServer(const X11Connection& x, xcb_window_t window)
{
    if (!xcb_get_extension_data(x.xcb(), &xcb_res_id)->present)
        return 0;
    const xcb_res_client_id_spec_t question = {window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const auto cookie = xcb_res_query_client_ids(x.xcb(), 1, &question);
    xcb_generic_error_t* error = nullptr;
    const XcbReply<xcb_res_query_client_ids_reply_t> reply(
        xcb_res_query_client_ids_reply(x.xcb(), cookie, &error));
    const XcbReply<xcb_generic_error_t> ownedError(error);
    if (!reply)
        return 0; // the window is gone, or the server is too old for the question
    for (auto ids = xcb_res_query_client_ids_ids_iterator(reply.get()); ids.rem;
         xcb_res_client_id_value_next(&ids)) {
        if ((ids.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) &&
            xcb_res_client_id_value_value_length(ids.data) > 0)
            return *xcb_res_client_id_value_value(ids.data);
    }
    return 0;
}

std::int64_t processToldByWindow(const X11Connection& x, xcb_window_t window)
{
    const QByteArray machine = x.property(window, XCB_ATOM_WM_CLIENT_MACHINE, XCB_ATOM_STRING);
    const QByteArray bytes = x.property(window, x.atom("_NET_WM_PID"), XCB_ATOM_CARDINAL);
    std::uint32_t process = 0;
    if (bytes.size() != sizeof process || machine != QSysInfo::machineHostName().toUtf8())
        return 0;
    std::memcpy(&process, bytes.constData(), sizeof process);
    return process;
}

QString executableOf(std::int64_t process)
{
    QString path = process ? QFile::symLinkTarget(QStringLiteral("/proc/%1/exe").arg(process)) : QString();
    const QLatin1StringView replaced(" (deleted)"); // an upgrade replaced the file while the program runs
    if (path.endsWith(replaced))
        path.chop(replaced.size());
    return path;
}

} // namespace

std::int64_t processOfWindow(const X11Connection& x, xcb_window_t window)
{
    const std::int64_t process = processToldByServer(x, window);
    return process ? process : processToldByWindow(x, window);
}

std::optional<RunningApplication> programOfWindow(const X11Connection& x, xcb_window_t window,
                                                  DesktopEntries& entries)
{
    if (!exists(x, window))
        return std::nullopt;
    const std::int64_t process = processOfWindow(x, window);
    if (process == ::getpid())
        return RunningApplication{process, QString(ownBundleIdentifier),
                                  QGuiApplication::applicationDisplayName()};

    const WindowClass windowClass = classOf(x, window);
    const QString executable = executableOf(process);
    std::optional<DesktopEntries::Entry> entry;
    for (const QString& id : entryIDsToldBy(x, window)) {
        if (!entry)
            entry = entries.entry(id);
    }
    if (!entry)
        entry = entries.entryForWindow(windowClass.name, windowClass.instance);

    QString name = entry ? entry->name : windowClass.name;
    if (name.isEmpty())
        name = executable.section(u'/', -1);
    return RunningApplication{process,
                              bundleIdentifier({.windowClass = windowClass.name,
                                                .executable = executable,
                                                .desktopEntryID = entry ? entry->id : QString()}),
                              name};
}

} // namespace orvane
