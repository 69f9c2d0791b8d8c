#include "OrvaneKit/Theme/SystemSymbol.h"

#include "OrvaneCore/Base/Log.h"
#include "OrvaneKit/Theme/SymbolPicture.h"
#include "Platform/Platform.h"

#include <QFile>

#include <map>
#include <memory>
#include <utility>

// The pictures are in a static library: this reference keeps the linker from leaving them out.
static void initResources()
{
    Q_INIT_RESOURCE(resources);
}

namespace orvane {

namespace {

using Picture = std::shared_ptr<const SymbolPicture>;

double strokeWidth(SystemSymbol::Weight weight)
{
    return weight == SystemSymbol::Weight::semibold ? 2.2 : 1.75;
}

QString path(const QString& name)
{
    return QStringLiteral(":/symbols/%1.svg").arg(name);
}

void logError(const QString& message)
{
    if (isPlatformInstalled())
        Log::make(QStringLiteral("Symbols")).error(message);
}

Picture load(const QString& name)
{
    QFile file(path(name));
    if (name.isEmpty() || !file.open(QIODevice::ReadOnly)) {
        logError(QStringLiteral("There is no symbol \"%1\".").arg(name));
        return nullptr;
    }
    auto picture = SymbolPicture::read(file.readAll());
    if (!picture) {
        logError(QStringLiteral("The picture of the symbol \"%1\" can't be read.").arg(name));
        return nullptr;
    }
    return std::make_shared<const SymbolPicture>(*std::move(picture));
}

/// Reads each symbol once. A missing name is kept too, so it is logged once.
Picture picture(const QString& name)
{
    static std::map<QString, Picture> cache;
    initResources();
    const auto cached = cache.find(name);
    if (cached != cache.end())
        return cached->second;
    return cache.emplace(name, load(name)).first->second;
}

} // namespace

// The file is read when the symbol is drawn for the first time: most symbols of a menu are never seen.
TemplateImage SystemSymbol::image(const QString& name, const QString& accessibilityDescription, double side,
                                  Weight weight)
{
    return {name, accessibilityDescription, QSizeF(side, side),
            [name, weight](QPainter& painter, const QRectF& rect) {
                if (const Picture symbol = picture(name))
                    symbol->draw(painter, rect, strokeWidth(weight));
            }};
}

bool SystemSymbol::exists(const QString& name)
{
    initResources();
    return !name.isEmpty() && QFile::exists(path(name));
}

} // namespace orvane
