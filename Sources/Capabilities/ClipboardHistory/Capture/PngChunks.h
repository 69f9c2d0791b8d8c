// The parts of a PNG file, as far as its pixels need them. Pure.
#pragma once

#include <QByteArray>

namespace orvane::PngChunks {

bool isPng(const QByteArray& bytes);

/// Returns the file without texts, profiles and other parts that pixels don't need, whose claimed and
/// unpacked sizes nothing bounds. It ends where a part claims more bytes than there are; pixels that are cut
/// off stay.
QByteArray ofPixels(const QByteArray& bytes);

} // namespace orvane::PngChunks
