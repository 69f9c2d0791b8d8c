// A document from a server, awaited on the main thread by a coroutine whose end nobody awaits.
//
//     const Http::Response response = co_await HttpGet(platform().http, request);
#pragma once

#include "OrvaneCore/Base/Pool.h"
#include "Platform/Http.h"

namespace orvane {

/// To be awaited once. Throws PlatformError when there is no response. If the program ends before the
/// response comes, the coroutine is destroyed.
class HttpGet {
public:
    HttpGet(Http& http, Http::Request request) : m_http(&http), m_request(std::move(request)) {}

    [[nodiscard]] bool await_ready() const noexcept { return false; }

    void await_suspend(std::coroutine_handle<UnownedTask::promise_type> caller)
    {
        auto continuation =
            std::make_shared<detail::Continuation>(caller, detail::Continuation::IfDropped::destroy);
        m_http->get(m_request, [answer = m_answer, continuation](Http::Answer told) {
            *answer = std::move(told);
            continuation->resume();
        });
    }

    Http::Response await_resume()
    {
        if (const auto* const error = std::get_if<PlatformError>(m_answer.get()))
            throw PlatformError(*error);
        return std::get<Http::Response>(std::move(*m_answer));
    }

private:
    Http* m_http;
    Http::Request m_request;
    std::shared_ptr<Http::Answer> m_answer = std::make_shared<Http::Answer>();
};

} // namespace orvane
