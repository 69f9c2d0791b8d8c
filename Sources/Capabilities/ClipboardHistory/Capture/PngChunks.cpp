#include "Capabilities/ClipboardHistory/Capture/PngChunks.h"

#include <QtEndian>

#include <algorithm>
#include <array>

namespace orvane::PngChunks {

namespace {

constexpr QByteArrayView signature("\x89PNG\r\n\x1A\n");
constexpr qsizetype frame = 12; // of a chunk: its length, name and checksum
constexpr std::array<QByteArrayView, 10> kept{"IHDR", "PLTE", "IDAT", "IEND", "tRNS",
                                              "gAMA", "cHRM", "sRGB", "sBIT", "pHYs"};

} // namespace

bool isPng(const QByteArray& bytes)
{
    return bytes.startsWith(signature);
}

QByteArray ofPixels(const QByteArray& bytes)
{
    QByteArray result = signature.toByteArray();
    QByteArrayView rest = QByteArrayView(bytes).sliced(std::min(signature.size(), bytes.size()));
    while (rest.size() >= frame) {
        const qint64 size = qint64{qFromBigEndian<quint32>(rest.data())} + frame;
        const QByteArrayView name = rest.sliced(4, 4);
        if (size > rest.size()) {
            if (name == "IDAT")
                result += rest;
            break;
        }
        if (std::ranges::find(kept, name) != kept.end())
            result += rest.first(size);
        rest = rest.sliced(size);
    }
    return result;
}

} // namespace orvane::PngChunks
