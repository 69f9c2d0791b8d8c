// The answer to the program, in the file that is the standard output.
#pragma once

#include "Platform/Protocols/FetchProtocol.h"

#include <QByteArray>
#include <QString>

namespace orvane {

class AnswerFile {
public:
    /// Throws std::system_error when the file can't be written, as the other functions do.
    AnswerFile();

    void append(const QByteArray& bytes);
    /// The response is complete.
    void finish(int status);
    /// There is no response; what was appended goes.
    void fail(FetchProtocol::Status status, const QString& reason = {});

private:
    static void write(const QByteArray& bytes);
    static void writeStatus(FetchProtocol::Status status);
};

} // namespace orvane
