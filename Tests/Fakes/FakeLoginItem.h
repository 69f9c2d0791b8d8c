// A login item whose system can be told to refuse.
#pragma once

#include "Platform/LoginItem.h"
#include "Platform/PlatformError.h"

#include <optional>

namespace orvane {

class FakeLoginItem : public LoginItem {
public:
    [[nodiscard]] Status status() const override { return current; }

    void registerItem() override
    {
        ++registrations;
        refuseIfTold();
        current = Status::enabled;
    }

    void unregisterItem() override
    {
        ++unregistrations;
        refuseIfTold();
        current = Status::notRegistered;
    }

    Status current = Status::notRegistered;
    std::optional<QString> refusal;
    int registrations = 0;
    int unregistrations = 0;

private:
    void refuseIfTold() const
    {
        if (refusal)
            throw PlatformError(PlatformError::Kind::notPermitted, *refusal);
    }
};

} // namespace orvane
