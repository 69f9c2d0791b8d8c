// The keyboard layouts of the X server. Main thread.
#pragma once

#include "Platform/InputSources.h"

#include <QObject>

namespace orvane {

class NotificationCenter;
class ServerKeymap;

class XkbInputSources : public InputSources {
public:
    /// Posts the changes on `center`.
    XkbInputSources(ServerKeymap& keymap, NotificationCenter& center);

    std::shared_ptr<const KeyboardLayout> currentASCIICapableKeyboardLayout() override;
    [[nodiscard]] std::optional<QString> keyName(std::int64_t keyCode) override;

private:
    ServerKeymap& m_keymap;
    /// The context of the connection.
    QObject m_context;
};

} // namespace orvane
