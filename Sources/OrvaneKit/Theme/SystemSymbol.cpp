#include "OrvaneKit/Theme/SystemSymbol.h"

#include "OrvaneCore/Base/Log.h"
#include "Platform/Platform.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

#include <map>
#include <memory>
#include <utility>

// The pictures live in a static library: this reference keeps the linker from leaving them out.
static void initResources()
{
    Q_INIT_RESOURCE(resources);
}

namespace orvane {

namespace {

using Renderer = std::shared_ptr<QSvgRenderer>;

// Every symbol has its strokes in this one width, so that a weight is a matter of replacing it.
constexpr QByteArrayView regularStroke = "stroke-width=\"1.75\"";
constexpr QByteArrayView semiboldStroke = "stroke-width=\"2.2\"";

QString path(const QString& name)
{
    return QStringLiteral(":/symbols/%1.svg").arg(name);
}

Renderer load(const QString& name, SystemSymbol::Weight weight)
{
    QFile file(path(name));
    if (name.isEmpty() || !file.open(QIODevice::ReadOnly)) {
        if (isPlatformInstalled())
            Log::make(QStringLiteral("Symbols"))
                .error(QStringLiteral("There is no symbol \"%1\".").arg(name));
        return nullptr;
    }
    QByteArray source = file.readAll();
    if (weight == SystemSymbol::Weight::semibold)
        source.replace(regularStroke, semiboldStroke);
    return std::make_shared<QSvgRenderer>(source);
}

// A name that is missing is remembered too, so it is logged once.
Renderer renderer(const QString& name, SystemSymbol::Weight weight)
{
    static std::map<std::pair<QString, SystemSymbol::Weight>, Renderer> cache;
    initResources();
    const auto key = std::pair(name, weight);
    const auto cached = cache.find(key);
    if (cached != cache.end())
        return cached->second;
    return cache.emplace(key, load(name, weight)).first->second;
}

} // namespace

TemplateImage SystemSymbol::image(const QString& name, const QString& accessibilityDescription, double side,
                                  Weight weight)
{
    const Renderer symbol = renderer(name, weight);
    return {name, accessibilityDescription, QSizeF(side, side),
            [symbol](QPainter& painter, const QRectF& rect) {
                if (!symbol)
                    return;
                painter.save();
                painter.setRenderHint(QPainter::Antialiasing);
                symbol->render(&painter, rect);
                painter.restore();
            }};
}

bool SystemSymbol::exists(const QString& name)
{
    initResources();
    return !name.isEmpty() && QFile::exists(path(name));
}

} // namespace orvane
