// Overlays that a test looks at, and input that it gives or refuses.
#pragma once

#include "Platform/Overlays.h"
#include "Platform/RunLoop.h"

#include <algorithm>
#include <vector>

namespace orvane {

class FakeOverlays : public Overlays {
public:
    /// Outlives this object and its holds.
    explicit FakeOverlays(RunLoop& runLoop) : m_runLoop(runLoop) {}

    void prepare(QWindow&, Input input) override { prepared.push_back(input); }

    [[nodiscard]] std::unique_ptr<InputHold> holdInput(std::function<void(bool isHeld)> answer) override
    {
        const bool isSecond =
            std::ranges::any_of(m_holds, [](Hold* hold) { return !hold->state->isRefused; });
        auto hold = std::make_unique<Hold>(*this);
        m_runLoop.perform([this, isSecond, weak = std::weak_ptr(hold->state), answer = std::move(answer)] {
            const auto state = weak.lock();
            if (!state)
                return;
            state->isHeld = !otherHasInput && !isSecond;
            state->isRefused = !state->isHeld;
            answer(state->isHeld);
        });
        return hold;
    }

    /// True while the keyboard and the pointer are this program's.
    [[nodiscard]] bool isInputHeld() const
    {
        for (const Hold* hold : m_holds) {
            if (hold->state->isHeld)
                return true;
        }
        return false;
    }
    [[nodiscard]] std::size_t holdCount() const { return m_holds.size(); }

    /// In the order of the calls.
    std::vector<Input> prepared;
    /// True while another program has a menu open.
    bool otherHasInput = false;
    /// The window that got the input last; only for comparing.
    const QWindow* target = nullptr;

private:
    class Hold : public InputHold {
    public:
        explicit Hold(FakeOverlays& theOwner) : owner(theOwner) { owner.m_holds.push_back(this); }
        ~Hold() override { std::erase(owner.m_holds, this); }
        Hold(const Hold&) = delete;
        Hold& operator=(const Hold&) = delete;

        void deliverTo(QWindow& window) override { owner.target = &window; }

        FakeOverlays& owner;
        struct State {
            bool isHeld = false;
            bool isRefused = false;
        };
        /// Ends with the hold, which withdraws the question.
        std::shared_ptr<State> state = std::make_shared<State>();
    };

    RunLoop& m_runLoop;
    std::vector<Hold*> m_holds;
};

} // namespace orvane
