// Documents from HTTPS servers. Main thread; no call blocks.
//
// A server's certificate must be valid, redirections lead from https to https only, and the proxy is the one
// that the desktop has. Nothing is kept between two requests: no cookies and no copies.
#pragma once

#include "Platform/PlatformError.h"

#include <QByteArray>
#include <QUrl>

#include <chrono>
#include <functional>
#include <variant>

namespace orvane {

class Http {
public:
    struct Request {
        QUrl url;
        /// A longer body is refused while it is read.
        qint64 mostBytes = 0;
        /// The longest time without a byte from the server.
        std::chrono::milliseconds patience = std::chrono::seconds(60);
    };
    struct Response {
        int status = 0;
        QByteArray body;
    };
    /// A response of any status, or why there is none in words for a person.
    using Answer = std::variant<Response, PlatformError>;
    using Completion = std::function<void(Answer answer)>;

    virtual ~Http() = default;

    /// Gets a document. The completion is called once, in a later turn of the run loop; not at all when the
    /// program ends before.
    virtual void get(const Request& request, Completion completion) = 0;
};

} // namespace orvane
