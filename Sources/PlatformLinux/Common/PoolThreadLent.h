// A thread of the pool that waits for another process leaves its place to the work of others, such as saving
// what was copied: the pool has only as many threads as there are processors.
#pragma once

#include <QThreadPool>

namespace orvane {

class PoolThreadLent {
public:
    PoolThreadLent() { QThreadPool::globalInstance()->releaseThread(); }
    ~PoolThreadLent() { QThreadPool::globalInstance()->reserveThread(); }
    PoolThreadLent(const PoolThreadLent&) = delete;
    PoolThreadLent& operator=(const PoolThreadLent&) = delete;
};

} // namespace orvane
