// Any bytes are either refused with a reason or read as values that can be stored again: their text reads as
// equal ones.
#include "PlatformLinux/Defaults/DefaultsCoding.h"
#include "Require.h"

#include <QJsonDocument>

#include <cstdint>

using namespace orvane;
using orvane::fuzz::require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray text(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const auto parsed = defaultscoding::parse(text);
    if (!parsed.values) {
        require(!parsed.problem.isEmpty());
        return 0;
    }
    QJsonObject stored;
    for (auto it = parsed.values->begin(); it != parsed.values->end(); ++it) {
        const auto json = defaultscoding::toJson(defaultscoding::fromJson(it.value()));
        if (json) // nothing for what is nested too deep
            stored.insert(it.key(), *json);
    }
    const auto again = defaultscoding::parse(QJsonDocument(stored).toJson());
    require(again.values.has_value());
    for (auto it = stored.begin(); it != stored.end(); ++it)
        require(defaultscoding::fromJson(again.values->value(it.key())) ==
                defaultscoding::fromJson(it.value()));
    return 0;
}
