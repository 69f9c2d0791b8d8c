// Resolves the character references of an HTML text.
#pragma once

#include <QByteArrayView>
#include <QString>

namespace orvane::HtmlCharacters {

/// Resolves numbers and the names of HTML 4. Others stay as they are written.
QString decode(QByteArrayView utf8);

} // namespace orvane::HtmlCharacters
