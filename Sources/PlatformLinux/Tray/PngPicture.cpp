#include "PlatformLinux/Tray/PngPicture.h"

#include <QByteArrayView>
#include <QtEndian>

namespace orvane {

namespace {

QByteArray bigEndian(quint32 number)
{
    QByteArray bytes(sizeof number, Qt::Uninitialized);
    qToBigEndian(number, bytes.data());
    return bytes;
}

/// Computes the CRC-32 with the polynomial of ISO 3309, with which each chunk ends.
quint32 checksum(QByteArrayView bytes)
{
    quint32 remainder = 0xFFFFFFFF;
    for (const char byte : bytes) {
        remainder ^= static_cast<quint8>(byte);
        for (int bit = 0; bit < 8; ++bit)
            remainder = (remainder >> 1) ^ ((remainder & 1) != 0 ? 0xEDB88320 : 0);
    }
    return ~remainder;
}

QByteArray chunk(QByteArrayView type, const QByteArray& data)
{
    const QByteArray body = type.toByteArray() + data;
    return bigEndian(static_cast<quint32>(data.size())) + body + bigEndian(checksum(body));
}

/// Returns the rows from the top, each after the number of its filter, which is none.
QByteArray rows(const QImage& image)
{
    const qsizetype rowSize = qsizetype{4} * image.width();
    QByteArray rows;
    rows.reserve((rowSize + 1) * image.height());
    for (int y = 0; y < image.height(); ++y) {
        rows.append('\0');
        rows.append(reinterpret_cast<const char*>(image.constScanLine(y)), rowSize);
    }
    return rows;
}

} // namespace

QByteArray pngPicture(const QImage& image)
{
    const QImage pixels = image.convertToFormat(QImage::Format_RGBA8888);
    const QByteArray header = bigEndian(static_cast<quint32>(pixels.width())) +
                              bigEndian(static_cast<quint32>(pixels.height())) +
                              QByteArray("\x08\x06\0\0\0", 5); // eight bits, with alpha, not interlaced
    constexpr qsizetype lengthPrefix = 4;                      // qCompress puts it before the stream
    return QByteArray("\x89PNG\r\n\x1A\n") + chunk("IHDR", header) +
           chunk("IDAT", qCompress(rows(pixels)).mid(lengthPrefix)) + chunk("IEND", {});
}

} // namespace orvane
