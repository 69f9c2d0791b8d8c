// The entry by which the session starts this program at login. Main thread.
#pragma once

namespace orvane {

class LoginItem {
public:
    enum class Status { notRegistered = 0, enabled = 1, requiresApproval = 2, notFound = 3 };

    virtual ~LoginItem() = default;

    [[nodiscard]] virtual Status status() const = 0;
    /// Both throw PlatformError; after a failure the status is what it was.
    virtual void registerItem() = 0;
    virtual void unregisterItem() = 0;
};

} // namespace orvane
