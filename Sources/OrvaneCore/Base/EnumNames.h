// Enums with names: one table for each gives what the store keeps and what a person reads.
//
//     enum class Glow { dim, bright };
//     inline constexpr std::array glowNames{
//         EnumName{Glow::dim, "dim", TextSource("LampText", "Dim")},
//         EnumName{Glow::bright, "bright", TextSource("LampText", "Bright")}};
//     constexpr const auto& enumNames(Glow) { return glowNames; }
#pragma once

#include "OrvaneCore/Base/TextSource.h"

#include <QString>

#include <array>
#include <concepts>
#include <optional>

namespace orvane {

/// One case of an enum. `rawValue` is ASCII and never changes, because files hold it; an enum whose cases
/// aren't shown has no titles.
template <class Enum>
struct EnumName {
    Enum value;
    QLatin1StringView rawValue;
    TextSource title;
    QStringView fixedTitle;

    constexpr EnumName(Enum theValue, const char* theRawValue, TextSource theTitle = {})
        : value(theValue),
          rawValue(theRawValue, static_cast<qsizetype>(std::char_traits<char>::length(theRawValue))),
          title(theTitle)
    {
    }
    /// A name that is the same in every language.
    constexpr EnumName(Enum theValue, const char* theRawValue, QStringView theFixedTitle)
        : EnumName(theValue, theRawValue)
    {
        fixedTitle = theFixedTitle;
    }
};

/// An enum with a table, in the order of its cases.
template <class Enum>
concept NamedEnum = std::is_enum_v<Enum> && requires(Enum value)
{
    {
        enumNames(value)[0]
        } -> std::convertible_to<EnumName<Enum>>;
};

template <NamedEnum Enum>
[[nodiscard]] constexpr QLatin1StringView rawValue(Enum value)
{
    return enumNames(value).at(static_cast<std::size_t>(value)).rawValue;
}

/// Returns the title in the language of the user.
template <NamedEnum Enum>
[[nodiscard]] QString title(Enum value)
{
    const EnumName<Enum>& name = enumNames(value).at(static_cast<std::size_t>(value));
    return name.fixedTitle.isEmpty() ? name.title.translated() : name.fixedTitle.toString();
}

/// Returns nothing for an unknown name; case counts.
template <NamedEnum Enum>
[[nodiscard]] std::optional<Enum> fromRawValue(QStringView raw)
{
    for (const EnumName<Enum>& name : enumNames(Enum{})) {
        if (raw == name.rawValue)
            return name.value;
    }
    return std::nullopt;
}

/// Returns the cases in their order.
template <NamedEnum Enum>
[[nodiscard]] constexpr auto allCases()
{
    constexpr std::size_t count = std::tuple_size_v<std::remove_cvref_t<decltype(enumNames(Enum{}))>>;
    std::array<Enum, count> cases{};
    for (std::size_t i = 0; i < count; ++i)
        cases[i] = enumNames(Enum{})[i].value;
    return cases;
}

/// True if each case stands at its own place of the table; for a static_assert beside it.
template <NamedEnum Enum>
[[nodiscard]] constexpr bool isInOrder()
{
    std::size_t index = 0;
    for (const Enum value : allCases<Enum>()) {
        if (static_cast<std::size_t>(value) != index++)
            return false;
    }
    return true;
}

} // namespace orvane
