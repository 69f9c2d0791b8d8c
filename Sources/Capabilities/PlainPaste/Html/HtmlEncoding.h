// Decodes the characters of an HTML document in any encoding.
#pragma once

#include <QByteArrayView>
#include <QString>

namespace orvane::HtmlEncoding {

/// Decides by the byte order mark, by zero bytes that only UTF-16 has, or by a meta element at the beginning;
/// else UTF-8, and windows-1252 if the document isn't that.
QString decode(QByteArrayView document);

} // namespace orvane::HtmlEncoding
