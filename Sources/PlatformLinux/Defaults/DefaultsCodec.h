// The text form of a defaults file: one flat JSON object, and nothing but JSON inside.
//
// Whole numbers are qint64; a number with a fraction or an exponent, or beyond 64 bits, is a double, and
// doubles are always written with one of the two ("1.0"). What JSON lacks is an object of a single key:
// {"$data": base64} or {"$double": "nan" | "inf" | "-inf"}; a map's own single key with "$" gets another "$".
#pragma once

#include <QByteArray>
#include <QString>
#include <QVariant>

#include <optional>

namespace orvane::defaultscodec {

/// Beyond these a text is refused, and none is written: what was stored can be read again.
constexpr qsizetype maximumBytes = 64 * 1024 * 1024;
constexpr int maximumDepth = 200; // lists and maps within one another, in one value
constexpr qsizetype maximumValues = 1'000'000;

struct Decoded {
    /// Nothing when the text is refused. Of two equal keys the later one counts.
    /// A null is an invalid variant.
    std::optional<QVariantMap> values;
    /// Why it was refused, for the log.
    QString problem;
};

Decoded decode(const QByteArray& text);

/// One line per key, in order of the keys; equal values give equal bytes. Invalid variants become null.
/// Nothing when it would exceed the limits. Only storable values may be given.
std::optional<QByteArray> encode(const QVariantMap& values);

/// The value in the types that a file keeps: bool, qint64, double, QString, QByteArray, QVariantList and
/// QVariantMap of these. Nothing for any other type, and for nesting beyond maximumDepth.
std::optional<QVariant> storable(const QVariant& value);

/// Equal in type and in value, at every depth; NaN equals itself.
bool identical(const QVariant& left, const QVariant& right);

} // namespace orvane::defaultscodec
