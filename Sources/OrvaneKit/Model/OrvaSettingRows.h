// Rows of a settings pane, each bound to a property in one line. They keep the property's owner alive.
//
//     toggleRow(settings, &LampSettings::glows, QStringLiteral("Glow"))
//     pickerRow(settings, &LampSettings::color, QStringLiteral("Color"))
#pragma once

#include "OrvaneCore/Base/EnumNames.h"
#include "OrvaneKit/Model/OrvaControls.h"
#include "OrvaneKit/Model/OrvaSection.h"

#include <cmath>

namespace orvane {

/// Shows the result of `transform` for a property's present value: `live(settings, &LampSettings::watts,
/// inWords)`.
template <class Owner, class Property, class Transform>
[[nodiscard]] auto live(const std::shared_ptr<Owner>& owner, Property Owner::*member, Transform transform)
{
    const std::shared_ptr<Property> property(owner, &((*owner).*member));
    using Result = std::remove_cvref_t<decltype(transform(property->get()))>;
    return Live<Result>([property, transform] { return transform(property->get()); }, {property});
}

/// Shows a property as it is and sets it by `set`.
template <class Owner, class Property, class Set>
[[nodiscard]] auto bind(const std::shared_ptr<Owner>& owner, Property Owner::*member, Set set)
{
    const std::shared_ptr<Property> property(owner, &((*owner).*member));
    using T = std::remove_cvref_t<decltype(property->get())>;
    return Binding<T>([property] { return property->get(); }, std::move(set), {property});
}

/// Binds an enum's property by the names of its cases; an unknown name isn't set.
template <class Owner, class Property>
[[nodiscard]] Binding<QString> bindName(const std::shared_ptr<Owner>& owner, Property Owner::*member)
{
    const std::shared_ptr<Property> property(owner, &((*owner).*member));
    using Enum = std::remove_cvref_t<decltype(property->get())>;
    return Binding<QString>([property] { return QString(rawValue(property->get())); },
                            [property](const QString& name) {
                                if (const auto value = fromRawValue<Enum>(name))
                                    property->set(*value);
                            },
                            {property});
}

/// Returns the cases of an enum as choices.
template <NamedEnum Enum>
[[nodiscard]] QList<OrvaPickerOption> options()
{
    QList<OrvaPickerOption> list;
    for (const Enum value : allCases<Enum>())
        list.append({title(value), rawValue(value)});
    return list;
}

namespace detail {

template <class Owner, class Property>
using PropertyValue = std::remove_cvref_t<decltype((std::declval<Owner&>().*std::declval<Property>()).get())>;

} // namespace detail

/// Makes a section with a heading of symbol and title.
[[nodiscard]] inline OrvaSection section(const QString& title, const QString& systemImage,
                                         const QList<AnyView>& rows,
                                         const std::optional<Live<QString>>& footnote = std::nullopt)
{
    return {.title = title, .systemImage = systemImage, .footnote = footnote, .content = rows};
}

template <class Owner, class Property>
[[nodiscard]] OrvaToggleRow toggleRow(const std::shared_ptr<Owner>& owner, Property Owner::*isOn,
                                      Live<QString> title, std::optional<Live<QString>> caption = {})
{
    return OrvaToggleRow(std::move(title), bind(owner, isOn), std::move(caption));
}

template <class Owner, class Property>
[[nodiscard]] OrvaPickerRow pickerRow(const std::shared_ptr<Owner>& owner, Property Owner::*choice,
                                      const QString& title)
{
    using Enum = detail::PropertyValue<Owner, Property Owner::*>;
    return OrvaPickerRow{title, bindName(owner, choice), options<Enum>()};
}

/// `label` is for assistive technology alone.
template <class Owner, class Property>
[[nodiscard]] OrvaRadioGroup radioGroup(const std::shared_ptr<Owner>& owner, Property Owner::*choice,
                                        const QString& label)
{
    using Enum = detail::PropertyValue<Owner, Property Owner::*>;
    return OrvaRadioGroup{label, bindName(owner, choice), options<Enum>()};
}

/// Makes a slider that moves freely; its value is shown cut to a whole number, followed by a unit: "12 pt".
template <class Owner, class Property>
[[nodiscard]] OrvaSliderRow sliderRow(const std::shared_ptr<Owner>& owner, Property Owner::*value,
                                      const QString& title, OrvaSliderRow::Range range, const QString& unit)
{
    const auto inWords = [unit](double number) {
        // Adding 0 makes 0 of the "-0" that a small negative number gives.
        return QStringLiteral("%1 %2").arg(std::trunc(number) + 0.0, 0, 'f', 0).arg(unit);
    };
    return OrvaSliderRow{
        .title = title, .value = bind(owner, value), .range = range, .detail = live(owner, value, inWords)};
}

} // namespace orvane
