// The characters of an HTML document, whatever encoding it came in.
#pragma once

#include <QByteArrayView>
#include <QString>

namespace orvane::HtmlEncoding {

/// By its byte order mark, by zero bytes as only UTF-16 has them, by what its beginning declares in a meta
/// element; else UTF-8, and windows-1252 if it isn't that.
QString decode(QByteArrayView document);

} // namespace orvane::HtmlEncoding
