// Checks that hold for each text that was made from a formatted one.
#pragma once

#include "Require.h"

#include <QString>

namespace orvane::fuzz {

inline void requirePlain(const QString& text)
{
    for (qsizetype at = 0; at < text.size(); ++at) {
        const QChar character = text.at(at);
        require(character.unicode() >= 0x20 || character == u'\t' || character == u'\n');
        require(character.unicode() < 0x7F || character.unicode() >= 0xA0);
        if (character.isSurrogate()) {
            require(character.isHighSurrogate() && at + 1 < text.size() && text.at(at + 1).isLowSurrogate());
            ++at;
        }
    }
}

} // namespace orvane::fuzz
