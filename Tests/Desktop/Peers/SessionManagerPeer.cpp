// A session manager that restores programs: prints what the programs that register with it want to happen to
// them at the next login.
//
// It prints "at ADDRESS" first, "registered" for each program, and then "restart N" with the number that the
// program chose of the protocol's four (0 if running, 1 anyway, 2 immediately, 3 never).
#include <X11/ICE/ICElib.h>
#include <X11/ICE/ICEutil.h>
#include <X11/SM/SMlib.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include <poll.h>

namespace {

std::vector<IceConn> connections;

void say(const char* what)
{
    std::puts(what);
    std::fflush(stdout);
}

Bool allowEverybody(char*)
{
    return True;
}

Status registerClient(SmsConn connection, SmPointer, char*)
{
    // A new id also for one that names its former one: nothing is restored here.
    char* id = SmsGenerateClientID(connection);
    const Status status = SmsRegisterClientReply(connection, id);
    std::free(id);
    say("registered");
    SmsSaveYourself(connection, SmSaveBoth, False, SmInteractStyleNone, False);
    return status;
}

void setProperties(SmsConn, SmPointer, int count, SmProp** properties)
{
    for (int i = 0; i < count; ++i) {
        if (std::strcmp(properties[i]->name, SmRestartStyleHint) == 0) {
            std::printf("restart %d\n", *static_cast<unsigned char*>(properties[i]->vals[0].value));
            std::fflush(stdout);
        }
        SmFreeProperty(properties[i]);
    }
    std::free(properties);
}

void saveYourselfDone(SmsConn connection, SmPointer, Bool)
{
    SmsSaveComplete(connection);
}

void closeConnection(SmsConn connection, SmPointer, int count, char** reasons)
{
    SmFreeReasons(count, reasons);
    std::erase(connections, SmsGetIceConnection(connection));
    SmsCleanUp(connection);
}

Status newClient(SmsConn, SmPointer, unsigned long* mask, SmsCallbacks* callbacks, char**)
{
    *mask = SmsRegisterClientProcMask | SmsInteractRequestProcMask | SmsInteractDoneProcMask |
            SmsSaveYourselfRequestProcMask | SmsSaveYourselfP2RequestProcMask | SmsSaveYourselfDoneProcMask |
            SmsCloseConnectionProcMask | SmsSetPropertiesProcMask | SmsDeletePropertiesProcMask |
            SmsGetPropertiesProcMask;
    callbacks->register_client.callback = registerClient;
    callbacks->interact_request.callback = [](SmsConn, SmPointer, int) {};
    callbacks->interact_done.callback = [](SmsConn, SmPointer, Bool) {};
    callbacks->save_yourself_request.callback = [](SmsConn, SmPointer, int, Bool, int, Bool, Bool) {};
    callbacks->save_yourself_phase2_request.callback = [](SmsConn connection, SmPointer) {
        SmsSaveYourselfPhase2(connection);
    };
    callbacks->save_yourself_done.callback = saveYourselfDone;
    callbacks->close_connection.callback = closeConnection;
    callbacks->set_properties.callback = setProperties;
    callbacks->delete_properties.callback = [](SmsConn, SmPointer, int, char**) {};
    callbacks->get_properties.callback = [](SmsConn connection, SmPointer) {
        SmsReturnProperties(connection, 0, nullptr);
    };
    return True;
}

void accept(IceListenObj listener)
{
    IceAcceptStatus status = IceAcceptFailure;
    IceConn connection = IceAcceptConnection(listener, &status);
    if (!connection)
        return;
    IceConnectStatus state = IceConnectPending;
    while ((state = IceConnectionStatus(connection)) == IceConnectPending)
        IceProcessMessages(connection, nullptr, nullptr);
    if (state == IceConnectAccepted)
        connections.push_back(connection);
    else
        IceCloseConnection(connection);
}

} // namespace

int main()
{
    char error[256];
    if (!SmsInitialize("orvane-test", "1", newClient, nullptr, allowEverybody, sizeof error, error)) {
        std::fprintf(stderr, "%s\n", error);
        return 1;
    }
    IceSetIOErrorHandler([](IceConn connection) { std::erase(connections, connection); });
    int count = 0;
    IceListenObj* listeners = nullptr;
    if (!IceListenForConnections(&count, &listeners, sizeof error, error)) {
        std::fprintf(stderr, "%s\n", error);
        return 1;
    }
    for (int i = 0; i < count; ++i)
        IceSetHostBasedAuthProc(listeners[i], allowEverybody);
    std::printf("at %s\n", IceComposeNetworkIdList(count, listeners));
    std::fflush(stdout);
    for (;;) {
        std::vector<pollfd> waits;
        for (int i = 0; i < count; ++i)
            waits.push_back({IceGetListenConnectionNumber(listeners[i]), POLLIN, 0});
        const std::vector<IceConn> present = connections;
        for (IceConn connection : present)
            waits.push_back({IceConnectionNumber(connection), POLLIN, 0});
        if (::poll(waits.data(), waits.size(), -1) <= 0)
            continue;
        for (std::size_t i = 0; i < waits.size(); ++i) {
            if (waits[i].revents == 0)
                continue;
            if (i < static_cast<std::size_t>(count))
                accept(listeners[i]);
            else
                IceProcessMessages(present[i - static_cast<std::size_t>(count)], nullptr, nullptr);
        }
    }
}
