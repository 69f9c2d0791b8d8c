#include "KeyboardShortcuts/Shortcut/ModifierFlags.h"

#include "Platform/HotKeys.h"

#include <array>

namespace orvane::KeyboardShortcuts {

namespace {

struct Row {
    EventFlags flag;
    std::int64_t carbon; // 0 where that encoding has none
    QStringView symbol;
};

constexpr std::array rows{
    Row{eventFlag::control, carbonModifier::control, u"⌃"},
    Row{eventFlag::option, carbonModifier::option, u"⌥"},
    Row{eventFlag::shift, carbonModifier::shift, u"⇧"},
    Row{eventFlag::command, carbonModifier::command, u"⌘"},
    Row{eventFlag::secondaryFn, 0, u"\U0001F310\uFE0E"},
};

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
    QString symbols;
    for (const Row& row : rows) {
        if ((flags & row.flag) != 0)
            symbols += row.symbol;
    }
    return symbols;
}

} // namespace orvane::KeyboardShortcuts
