#include "Fakes/FakeHttp.h"

namespace orvane {

void FakeHttp::get(const Request& request, Completion completion)
{
    requests.append(request);
    m_waiting.push_back({request, std::move(completion)});
    if (request.url.scheme() != QLatin1String("https")) {
        complete(m_waiting.back(), PlatformError(PlatformError::Kind::failed,
                                                 QStringLiteral("Only secure addresses are loaded.")));
        m_waiting.pop_back();
    } else if (const auto known = answers.constFind(request.url); known != answers.constEnd()) {
        complete(m_waiting.back(), *known);
        m_waiting.pop_back();
    }
}

void FakeHttp::answer(const Answer& answer)
{
    const Waiting oldest = std::move(m_waiting.front());
    m_waiting.pop_front();
    complete(oldest, answer);
}

void FakeHttp::complete(const Waiting& waiting, const Answer& answer)
{
    const auto* const response = std::get_if<Response>(&answer);
    const bool isTooLong = response && response->body.size() > waiting.request.mostBytes;
    const Answer told = isTooLong ? PlatformError(PlatformError::Kind::failed,
                                                  QStringLiteral("The server sends more than is loaded."))
                                  : answer;
    m_runLoop.perform([completion = waiting.completion, told] { completion(told); });
}

} // namespace orvane
