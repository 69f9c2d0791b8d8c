// Keeps a test's process, and the programs that it starts, from asking any other machine.
#pragma once

#include <QByteArray>
#include <QtGlobal>

namespace orvane::tests {

/// Fetchers trust nobody then, and reach this machine alone. To be called before any thread is started.
inline void goWithoutNetwork()
{
    qputenv("ORVANE_TEST_AUTHORITY", "/nonexistent");
    for (const char* name : {"https_proxy", "HTTPS_PROXY", "http_proxy", "HTTP_PROXY", "all_proxy",
                             "ALL_PROXY", "no_proxy", "NO_PROXY"})
        qunsetenv(name);
}

} // namespace orvane::tests
