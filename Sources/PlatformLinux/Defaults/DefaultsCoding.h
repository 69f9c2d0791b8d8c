// Defaults values as JSON. Bytes, which JSON lacks, are an object of a single key: {"$data": base64}.
//
// JSON has one kind of number: a double that is whole is written without a point and read back as a qint64.
// Whole numbers of 64 bits stay exact.
#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <QVariant>

#include <optional>

namespace orvane::defaultscoding {

/// The size beyond which a text is refused in both directions, so that what was stored can be read again.
constexpr qsizetype maximumBytes = qsizetype{8} * 1024 * 1024;
/// The number of lists and maps within one another in one value that is still stored.
constexpr int maximumDepth = 200;

/// Returns nothing for a type that a file can't keep, for NaN and the infinities, and for nesting beyond
/// maximumDepth.
[[nodiscard]] std::optional<QJsonValue> toJson(const QVariant& value);

/// A null gives an invalid variant.
[[nodiscard]] QVariant fromJson(const QJsonValue& value);

struct Parsed {
    /// Absent when the text isn't one whole JSON object.
    std::optional<QJsonObject> values;
    /// The reason for the refusal, for the log.
    QString problem;
};

[[nodiscard]] Parsed parse(const QByteArray& text);

} // namespace orvane::defaultscoding
