// A picture made ready to be read: grey, dark on light, and enlarged.
#pragma once

#include "Platform/Protocols/WorkerProtocol.h"

#include <memory>

struct Pix;

namespace orvane {

struct TextPictureEnd {
    void operator()(Pix* picture) const;
};
using TextPicture = std::unique_ptr<Pix, TextPictureEnd>;

/// Reads the pixels of `size` that a file begins with. Throws std::runtime_error when it can't.
[[nodiscard]] TextPicture readTextPicture(int file, WorkerProtocol::PictureSize size);

} // namespace orvane
