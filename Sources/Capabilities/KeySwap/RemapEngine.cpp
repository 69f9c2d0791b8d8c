#include "Capabilities/KeySwap/RemapEngine.h"

namespace orvane {

const RemapEngine::KeyCodes& RemapEngine::defaultShortcutKeyCodes()
{
    static const KeyCodes codes{
        0,  // A
        1,  // S
        3,  // F
        6,  // Z
        7,  // X
        8,  // C
        9,  // V
        13, // W
        15, // R
        17, // T
        45, // N
    };
    return codes;
}

RemapOutcome RemapEngine::outcome(const KeyChord& chord, RemapMode mode, const KeyCodes& table)
{
    const bool hasControl = chord.flags.contains(RemapFlags::control);
    const bool hasCommand = chord.flags.contains(RemapFlags::command);
    const auto swapped = [&] {
        return RemapOutcome::rewrite(
            chord.flags.symmetricDifference(RemapFlags{RemapFlags::control, RemapFlags::command}));
    };

    switch (mode) {
    case RemapMode::off:
        break;
    case RemapMode::commonShortcuts:
        if (hasControl && !hasCommand && table.contains(chord.keyCode))
            return swapped();
        break;
    case RemapMode::fullSwap:
        if (hasControl != hasCommand)
            return swapped();
        break;
    }
    return RemapOutcome::unchanged();
}

} // namespace orvane
