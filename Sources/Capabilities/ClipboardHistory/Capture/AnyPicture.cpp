#include "Capabilities/ClipboardHistory/Capture/AnyPicture.h"

#include "Capabilities/ClipboardHistory/Capture/Picture.h"
#include "Platform/Pictures.h"
#include "Platform/Platform.h"

namespace orvane::AnyPicture {

std::optional<QByteArray> asPng(const QByteArray& bytes)
{
    if (bytes.startsWith("II") || bytes.startsWith("MM"))
        return platform().pictures.png(bytes, Pictures::Foreign::tiff, {});
    return Picture::isReadable(bytes) ? std::optional(bytes) : std::nullopt;
}

} // namespace orvane::AnyPicture
