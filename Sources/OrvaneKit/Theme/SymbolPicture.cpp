#include "OrvaneKit/Theme/SymbolPicture.h"

#include "OrvaneKit/Theme/SymbolPath.h"

#include <QPainter>
#include <QPen>
#include <QTransform>
#include <QXmlStreamReader>

#include <algorithm>
#include <iterator>
#include <utility>

namespace orvane {

namespace {

/// The properties that an element gives to those inside it. The width of strokes isn't one: it is the same
/// for the family.
struct Style {
    bool isFilled = true;
    bool isStroked = false;
    Qt::FillRule fillRule = Qt::WindingFill;
    QTransform transform;
};

std::optional<bool> isPainted(QStringView paint)
{
    if (paint == u"none")
        return false;
    return paint == u"#000" ? std::optional(true) : std::nullopt;
}

/// Reads "rotate(angle x y)".
std::optional<QTransform> rotation(QStringView value)
{
    if (!value.startsWith(u"rotate(") || !value.endsWith(u')'))
        return std::nullopt;
    const QList<QStringView> parts = value.sliced(7).chopped(1).split(u' ');
    if (parts.size() != 3)
        return std::nullopt;
    const double x = parts[1].toDouble(), y = parts[2].toDouble();
    return QTransform().translate(x, y).rotate(parts[0].toDouble()).translate(-x, -y);
}

} // namespace

class SymbolPicture::Reader {
public:
    explicit Reader(const QByteArray& svg) : m_xml(svg) {}

    std::optional<SymbolPicture> picture()
    {
        if (!m_xml.readNextStartElement() || m_xml.name() != u"svg" || attribute(u"viewBox") != u"0 0 24 24")
            return std::nullopt;
        readChildren({});
        return m_xml.hasError() ? std::nullopt : std::optional(std::move(m_picture));
    }

private:
    void readChildren(const Style& style)
    {
        while (m_xml.readNextStartElement())
            readElement(styled(style));
    }

    void readElement(const Style& style)
    {
        const QStringView name = m_xml.name();
        if (name == u"g") {
            readChildren(style);
            return;
        }
        if (name == u"path") {
            if (const auto path = symbolPath(attribute(u"d").toLatin1()))
                add(*path, style);
            else
                fail();
        } else if (name == u"circle") {
            QPainterPath path;
            path.addEllipse(QPointF(number(u"cx"), number(u"cy")), number(u"r"), number(u"r"));
            add(path, style);
        } else if (name == u"rect") {
            QPainterPath path;
            path.addRoundedRect(QRectF(number(u"x"), number(u"y"), number(u"width"), number(u"height")),
                                number(u"rx"), number(u"rx"));
            add(path, style);
        } else {
            fail();
        }
        m_xml.skipCurrentElement();
    }

    Style styled(Style style)
    {
        for (const QXmlStreamAttribute& each : m_xml.attributes()) {
            const QStringView name = each.name(), value = each.value();
            if (name == u"fill")
                style.isFilled = checked(isPainted(value));
            else if (name == u"stroke")
                style.isStroked = checked(isPainted(value));
            else if (name == u"fill-rule")
                style.fillRule = value == u"evenodd" ? Qt::OddEvenFill : Qt::WindingFill;
            else if (name == u"transform")
                style.transform = checked(rotation(value)) * style.transform;
            else if (!isKnown(name))
                fail();
        }
        return style;
    }

    static bool isKnown(QStringView attribute)
    {
        constexpr QStringView known[] = {
            u"cx",           u"cy",    u"d", u"height", u"r", u"rx", u"stroke-linecap", u"stroke-linejoin",
            u"stroke-width", u"width", u"x", u"y"};
        return std::ranges::find(known, attribute) != std::end(known);
    }

    void add(QPainterPath path, const Style& style)
    {
        path.setFillRule(style.fillRule);
        m_picture.m_shapes.push_back({style.transform.map(path), style.isFilled, style.isStroked});
    }

    [[nodiscard]] QString attribute(QStringView name) const
    {
        return m_xml.attributes().value(QString(), name.toString()).toString();
    }

    double number(QStringView name)
    {
        bool isNumber = false;
        const double value = attribute(name).toDouble(&isNumber);
        if (!isNumber)
            fail();
        return value;
    }

    template <typename Value>
    Value checked(const std::optional<Value>& value)
    {
        if (!value)
            fail();
        return value.value_or(Value());
    }

    void fail() { m_xml.raiseError(); }

    QXmlStreamReader m_xml;
    SymbolPicture m_picture;
};

std::optional<SymbolPicture> SymbolPicture::read(const QByteArray& svg)
{
    return Reader(svg).picture();
}

void SymbolPicture::draw(QPainter& painter, const QRectF& rect, double strokeWidth) const
{
    const QPen pen(Qt::black, strokeWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(rect.topLeft());
    painter.scale(rect.width() / side, rect.height() / side);
    for (const Shape& shape : m_shapes) {
        painter.setPen(shape.isStroked ? pen : QPen(Qt::NoPen));
        painter.setBrush(shape.isFilled ? QBrush(Qt::black) : QBrush(Qt::NoBrush));
        painter.drawPath(shape.path);
    }
    painter.restore();
}

} // namespace orvane
