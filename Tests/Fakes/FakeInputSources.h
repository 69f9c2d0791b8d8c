// Layouts that a test makes; American English at first.
#pragma once

#include "Platform/InputSources.h"
#include "Platform/NotificationCenter.h"

#include <QMap>

namespace orvane {

class FakeKeyboardLayout : public KeyboardLayout {
public:
    using Texts = QMap<std::int64_t, QString>;

    explicit FakeKeyboardLayout(Texts keyTexts) : texts(std::move(keyTexts)) {}
    /// Has letters, digits, punctuation and the keypad, by virtual key codes.
    static std::shared_ptr<FakeKeyboardLayout> american();

    [[nodiscard]] std::optional<QString> keyTranslate(std::int64_t virtualKeyCode) const override
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

    [[nodiscard]] std::optional<QString> keyName(std::int64_t keyCode) override
    {
        const auto name = names.find(keyCode);
        return name == names.end() ? std::nullopt : std::optional(*name);
    }

    /// Switches the layout, as the user does.
    void select(std::shared_ptr<const KeyboardLayout> newLayout)
    {
        layout = std::move(newLayout);
        m_center.post(selectedKeyboardInputSourceChangedNotification());
    }

    /// Null stands for a system that can't tell.
    std::shared_ptr<const KeyboardLayout> layout = FakeKeyboardLayout::american();
    /// The keys that have names of their own, none at first.
    QMap<std::int64_t, QString> names;

private:
    NotificationCenter& m_center;
};

} // namespace orvane
