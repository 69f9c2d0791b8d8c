// Documents by orvane-fetch, a process for each: what reads answers of strangers and encrypts connections
// stays out of this one.
#pragma once

#include "Platform/Http.h"

#include <QString>

#include <list>
#include <memory>

namespace orvane {

class RunLoop;

class FetcherHttp : public Http {
public:
    explicit FetcherHttp(RunLoop& runLoop);
    /// With another program.
    FetcherHttp(RunLoop& runLoop, QString program);
    ~FetcherHttp() override;

    void get(const Request& request, Completion completion) override;
    /// Kills the fetchers; nobody is told.
    void giveUp();

private:
    struct Transfer;

    void finish(Transfer& transfer);

    RunLoop& m_runLoop;
    QString m_program;
    std::list<std::unique_ptr<Transfer>> m_transfers;
};

} // namespace orvane
