// Resolves the character references of an HTML text.
#pragma once

#include <QByteArrayView>
#include <QString>

namespace orvane::HtmlCharacters {

/// By number, and by the names of HTML 4. Others stay as they stand.
QString decode(QByteArrayView utf8);

} // namespace orvane::HtmlCharacters
