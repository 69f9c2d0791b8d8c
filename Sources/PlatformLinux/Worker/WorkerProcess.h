// One running worker. Its end kills it. Any thread, one at a time.
#pragma once

#include "PlatformLinux/Common/FileDescriptor.h"

#include <QByteArray>

#include <thread>

namespace orvane {

class WorkerProcess {
public:
    /// Throws std::system_error when it can't be started.
    explicit WorkerProcess(const QByteArray& program);
    ~WorkerProcess();
    WorkerProcess(const WorkerProcess&) = delete;
    WorkerProcess& operator=(const WorkerProcess&) = delete;

    /// Our end of the socket pair.
    [[nodiscard]] int descriptor() const { return m_socket.get(); }

private:
    FileDescriptor m_socket;
    FileDescriptor m_process;
    std::thread m_reaper;
};

} // namespace orvane
