// A network without servers: a test says how each address answers, or answers by hand.
#pragma once

#include "Platform/Http.h"
#include "Platform/RunLoop.h"

#include <QHash>
#include <QList>

#include <deque>

namespace orvane {

class FakeHttp : public Http {
public:
    explicit FakeHttp(RunLoop& runLoop) : m_runLoop(runLoop) {}

    void get(const Request& request, Completion completion) override;

    /// Answers the oldest request that waits. There must be one.
    void answer(const Answer& answer);
    void answer(int status, const QByteArray& body) { answer(Response{status, body}); }
    [[nodiscard]] std::size_t waiting() const { return m_waiting.size(); }

    /// Requests for these addresses are answered by themselves.
    QHash<QUrl, Answer> answers;
    /// Every request so far.
    QList<Request> requests;

private:
    struct Waiting {
        Request request;
        Completion completion;
    };
    void complete(const Waiting& waiting, const Answer& answer);

    RunLoop& m_runLoop;
    std::deque<Waiting> m_waiting;
};

} // namespace orvane
