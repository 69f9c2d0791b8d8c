#include "Capabilities/ImageResizer/ImageResizeEngine.h"

#include <algorithm>
#include <limits>

namespace orvane::ImageResizeEngine {

namespace {

/// Returns the place of the dot before the extension, or -1.
qsizetype extensionDot(const QString& path)
{
    const qsizetype nameStart = path.lastIndexOf(u'/') + 1;
    const qsizetype dot = path.lastIndexOf(u'.');
    return dot > nameStart && dot + 1 < path.size() ? dot : -1;
}

QString extensionOf(const QString& path)
{
    const qsizetype dot = extensionDot(path);
    return dot < 0 ? QString() : path.mid(dot + 1);
}

Pictures::Size pixels(QSizeF size)
{
    constexpr double most = std::numeric_limits<int>::max();
    return {static_cast<int>(std::min(size.width(), most)), static_cast<int>(std::min(size.height(), most))};
}

} // namespace

const QSet<QString>& supportedExtensions()
{
    static const QSet<QString> extensions{
        QStringLiteral("png"),  QStringLiteral("jpg"), QStringLiteral("jpeg"), QStringLiteral("heic"),
        QStringLiteral("tiff"), QStringLiteral("gif"), QStringLiteral("bmp"),  QStringLiteral("webp")};
    return extensions;
}

QString lowerCasedExtension(const QString& path)
{
    return extensionOf(path).toLower();
}

Output outputType(const QString& path, ResizeFormat format)
{
    using enum Pictures::Type;
    const QString extension = lowerCasedExtension(path);
    switch (format) {
    case ResizeFormat::png:
        return {png, QStringLiteral("png")};
    case ResizeFormat::jpeg:
        return {jpeg, QStringLiteral("jpg")};
    case ResizeFormat::keepOriginal:
        break;
    }
    if (extension == QLatin1String("png"))
        return {png, extension};
    if (extension == QLatin1String("heic"))
        return {heic, extension};
    if (extension == QLatin1String("tiff"))
        return {tiff, extension};
    return {jpeg, extension.isEmpty() ? QStringLiteral("jpg") : extension};
}

QString outputPath(const QString& path, const QString& label, const QString& extension, int index)
{
    const QString stem = path.left(extensionDot(path)); // all of it without a dot
    const QString counter = index == 0 ? QString() : QStringLiteral(" %1").arg(index + 1);
    return stem + QStringLiteral(" (") + label + u')' + counter + u'.' + extension;
}

std::optional<QString> resize(Pictures& pictures, const QString& path, const Options& options,
                              std::stop_token stop)
{
    const auto size = pictures.measure(path, stop);
    if (!size)
        return std::nullopt;
    const QSizeF fitted = ImageResizeMath::fittedSize(QSizeF(size->width, size->height), options.box.width(),
                                                      options.box.height(), options.enlarging);
    const Output output = outputType(path, options.format);
    return pictures.writeCopy(
        {path, *size, pixels(fitted), output.type, options.quality,
         [=](int index) { return outputPath(path, options.label, output.extension, index); }},
        stop);
}

} // namespace orvane::ImageResizeEngine
