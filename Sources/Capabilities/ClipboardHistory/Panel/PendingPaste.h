// A paste that waits until the program that was activated can be in front, and until other programs get what
// was put on the pasteboard. Ended before, it doesn't come. Main thread.
#pragma once

#include "Platform/Pasteboard.h"
#include "Platform/RunLoop.h"

#include <functional>
#include <memory>

namespace orvane {

class PendingPaste {
public:
    /// To be made in the turn in which the pasteboard was written. `ready` is called once, in a later turn,
    /// and may end this object.
    explicit PendingPaste(std::function<void()> ready);

private:
    void goOn();

    std::function<void()> m_ready;
    std::unique_ptr<Timer> m_activation;       // null when its time is over
    std::unique_ptr<PasteboardRead> m_handing; // null when others get the content
};

} // namespace orvane
