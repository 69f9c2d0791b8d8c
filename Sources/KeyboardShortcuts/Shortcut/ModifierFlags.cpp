#include "KeyboardShortcuts/Shortcut/ModifierFlags.h"

#include "OrvaneCore/Base/TextSource.h"
#include "Platform/HotKeys.h"

#include <QCoreApplication>

#include <array>

namespace orvane::KeyboardShortcuts {

namespace {

struct Row {
    EventFlags flag;
    std::int64_t carbon; // 0 where that encoding has none
    TextSource text;
};

constexpr std::array rows{
    Row{eventFlag::control, carbonModifier::control, TextSource("KeyText", "⌃")},
    Row{eventFlag::option, carbonModifier::option, TextSource("KeyText", "⌥")},
    Row{eventFlag::shift, carbonModifier::shift, TextSource("KeyText", "⇧")},
    Row{eventFlag::command, carbonModifier::command, TextSource("KeyText", "⌘")},
};
constexpr Row function{eventFlag::secondaryFn, 0, TextSource("KeyText", "🌐︎")};

} // namespace

std::int64_t toCarbonModifiers(EventFlags flags)
{
    std::int64_t carbon = 0;
    for (const Row& row : rows) {
        if ((flags & row.flag) != 0)
            carbon |= row.carbon;
    }
    return carbon;
}

EventFlags toEventFlags(std::int64_t carbonModifiers)
{
    EventFlags flags = 0;
    for (const Row& row : rows) {
        if ((carbonModifiers & row.carbon) != 0)
            flags |= row.flag;
    }
    return flags;
}

QString description(EventFlags flags)
{
    const QString order = QCoreApplication::translate(
        "KeyText", "⌃⌥⇧⌘", "These four in the order in which a shortcut is written");
    QString text;
    for (const QChar symbol : order) {
        for (const Row& row : rows) {
            if ((flags & row.flag) != 0 && row.text.source() == symbol)
                text += row.text.translated();
        }
    }
    if ((flags & function.flag) != 0)
        text += function.text.translated();
    return text;
}

} // namespace orvane::KeyboardShortcuts
