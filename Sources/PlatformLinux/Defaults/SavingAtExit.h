// Has the settings written also when the process ends by exit(), as the toolkit ends it when the X server is
// gone: nothing on the stack is destroyed then. Main thread; one at a time.
#pragma once

namespace orvane {

class JsonDefaultsStore;

class SavingAtExit {
public:
    /// The store must outlive this object.
    explicit SavingAtExit(JsonDefaultsStore& store);
    ~SavingAtExit();
    SavingAtExit(const SavingAtExit&) = delete;
    SavingAtExit& operator=(const SavingAtExit&) = delete;
};

} // namespace orvane
