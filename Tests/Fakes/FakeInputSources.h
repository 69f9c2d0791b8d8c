// Layouts that a test makes up: American English at first.
#pragma once

#include "Platform/InputSources.h"
#include "Platform/NotificationCenter.h"

#include <QMap>

namespace orvane {

class FakeKeyboardLayout : public KeyboardLayout {
public:
    using Texts = QMap<std::int64_t, QString>;

    explicit FakeKeyboardLayout(Texts keyTexts) : texts(std::move(keyTexts)) {}
    /// Letters, digits, punctuation and the keypad's, by their virtual key codes.
    static std::shared_ptr<FakeKeyboardLayout> american();

    std::optional<QString> keyTranslate(std::int64_t virtualKeyCode) const override
    {
        const auto text = texts.find(virtualKeyCode);
        return text == texts.end() ? std::nullopt : std::optional(*text);
    }

    Texts texts;
};

class FakeInputSources : public InputSources {
public:
    explicit FakeInputSources(NotificationCenter& center) : m_center(center) {}

    std::shared_ptr<const KeyboardLayout> currentASCIICapableKeyboardLayout() override { return layout; }

    /// What the user's switching does.
    void select(std::shared_ptr<const KeyboardLayout> newLayout)
    {
        layout = std::move(newLayout);
        m_center.post(selectedKeyboardInputSourceChangedNotification());
    }

    /// Null is a system that can't tell.
    std::shared_ptr<const KeyboardLayout> layout = FakeKeyboardLayout::american();

private:
    NotificationCenter& m_center;
};

} // namespace orvane
