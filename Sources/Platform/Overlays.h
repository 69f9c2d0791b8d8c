// Windows of the program that lie above everything else on a display, panels and full-screen windows
// included, and the keyboard and the pointer for them. Main thread.
#pragma once

#include <functional>
#include <memory>

class QWindow;

namespace orvane {

/// The keyboard and the pointer, kept from all other programs. Its end gives them back, once what is pressed
/// at that moment was let go of, so that nobody sees a release without its press; where the keyboard's focus
/// was, it still is.
class InputHold {
public:
    virtual ~InputHold() = default;

    /// Sends all input to a window of the program that is shown, wherever the pointer is. Before this call it
    /// goes nowhere.
    virtual void deliverTo(QWindow& window) = 0;
};

class Overlays {
public:
    enum class Input { takes, passesThrough };

    virtual ~Overlays() = default;

    /// Makes an overlay of a window that has a handle and wasn't shown yet: it has no frame, is on all
    /// desktops and in no list of windows, and nothing but another overlay gets above it. With
    /// `passesThrough`, clicks and motions go to what is below.
    virtual void prepare(QWindow& window, Input input) = 0;

    /// Asks for the keyboard and the pointer, and tells once, in a later turn of the run loop, if they are
    /// held. They can't be had while another program holds them, as one does whose menu is open; after
    /// half a second of trying the answer is no. While there is a hold, that is the answer to a second one.
    /// The end of the object withdraws the question.
    [[nodiscard]] virtual std::unique_ptr<InputHold> holdInput(std::function<void(bool isHeld)> answer) = 0;
};

} // namespace orvane
