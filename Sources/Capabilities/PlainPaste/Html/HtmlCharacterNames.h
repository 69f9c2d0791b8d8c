// The names that HTML 4 has for characters, and "apos", which XML adds.
#pragma once

#include <QByteArrayView>

#include <optional>

namespace orvane::HtmlCharacterNames {

/// Returns the character of a name such as "eacute"; case counts. Nothing for an unknown name.
[[nodiscard]] std::optional<char16_t> character(QByteArrayView name);

} // namespace orvane::HtmlCharacterNames
