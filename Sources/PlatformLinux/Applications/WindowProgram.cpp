#include "PlatformLinux/Applications/WindowProgram.h"

#include "PlatformLinux/Applications/ApplicationIdentity.h"
#include "PlatformLinux/Applications/DesktopEntries.h"
#include "PlatformLinux/Common/OwnName.h"
#include "PlatformLinux/X11/WindowTexts.h"

#include <QFile>
#include <QSysInfo>

#include <array>
#include <utility>

#include <unistd.h>

#include <xcb/res.h>

namespace orvane {

namespace {

/// The server knows which process is at the other end, whatever the window says of itself.
class ProcessQuestion {
public:
    ProcessQuestion(XExchange& exchange, xcb_window_t window)
        : m_machine(exchange.askProperty(window, XCB_ATOM_WM_CLIENT_MACHINE, XCB_ATOM_STRING)),
          m_process(exchange.askProperty(window, exchange.atoms().process, XCB_ATOM_CARDINAL)),
          m_isKnown(exchange.link().extension(xcb_res_id) != nullptr)
    {
        const xcb_res_client_id_spec_t question = {window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
        if (m_isKnown)
            m_client = xcb_res_query_client_ids(exchange.xcb(), 1, &question);
    }

    [[nodiscard]] std::int64_t answer(XExchange& exchange)
    {
        const std::string machine = exchange.bytes(m_machine);
        const auto process = exchange.numbers(m_process);
        if (const std::int64_t told = toldByServer(exchange))
            return told;
        const bool isHere = machine == QSysInfo::machineHostName().toStdString();
        return process.size() == 1 && isHere ? process[0] : 0;
    }

private:
    /// Returns 0 when the window is gone, or the server is too old for the question.
    std::int64_t toldByServer(XExchange& exchange)
    {
        const auto reply = m_isKnown ? exchange.reply<xcb_res_query_client_ids_reply_t>(m_client) : nullptr;
        if (!reply)
            return 0;
        for (auto ids = xcb_res_query_client_ids_ids_iterator(reply.get()); ids.rem;
             xcb_res_client_id_value_next(&ids)) {
            if ((ids.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) &&
                xcb_res_client_id_value_value_length(ids.data) > 0)
                return *xcb_res_client_id_value_value(ids.data);
        }
        return 0;
    }

    xcb_get_property_cookie_t m_machine;
    xcb_get_property_cookie_t m_process;
    xcb_res_query_client_ids_cookie_t m_client{};
    bool m_isKnown;
};

QString executableOf(std::int64_t process)
{
    QString path = process ? QFile::symLinkTarget(QStringLiteral("/proc/%1/exe").arg(process)) : QString();
    const QLatin1StringView replaced(" (deleted)"); // an upgrade replaced the file while the program runs
    if (path.endsWith(replaced))
        path.chop(replaced.size());
    return path;
}

} // namespace

std::int64_t processOfWindow(XExchange& exchange, xcb_window_t window)
{
    return ProcessQuestion(exchange, window).answer(exchange);
}

std::optional<RunningApplication> programOfWindow(XExchange& exchange, xcb_window_t window,
                                                  DesktopEntries& entries)
{
    const XAtoms& atoms = exchange.atoms();
    const auto existsCookie = xcb_get_window_attributes(exchange.xcb(), window);
    const auto classCookie = exchange.askProperty(window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING);
    // Toolkits write these on their windows: ids of desktop entries, or the path of one.
    const std::array idCookies{exchange.askProperty(window, atoms.kdeDesktopFile, atoms.utf8String),
                               exchange.askProperty(window, atoms.gtkApplicationId, atoms.utf8String)};
    ProcessQuestion processQuestion(exchange, window);
    const bool exists = exchange.reply<xcb_get_window_attributes_reply_t>(existsCookie) != nullptr;
    const WindowClass windowClass = windowClassOf(exchange.bytes(classCookie));
    QStringList ids;
    for (const auto& cookie : idCookies) {
        const QString id = desktopEntryIDOf(exchange.bytes(cookie));
        if (!id.isEmpty())
            ids.append(id);
    }
    const std::int64_t process = processQuestion.answer(exchange);
    if (!exists || exchange.isLate())
        return std::nullopt;
    if (process == ::getpid())
        return RunningApplication{process, QString(ownBundleIdentifier), QString(ownName)};

    const QString executable = executableOf(process);
    std::optional<DesktopEntries::Entry> entry;
    for (const QString& id : std::as_const(ids)) {
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
