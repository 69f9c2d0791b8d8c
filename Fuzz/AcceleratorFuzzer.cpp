// Whatever stands in a desktop's settings, a shortcut that is read from them has a key and no modifiers but
// the four that there are.
#include "Platform/HotKeys.h"
#include "PlatformLinux/Shortcuts/Accelerator.h"
#include "Require.h"

#include <QStringList>

#include <cstdint>

using namespace orvane;
using orvane::fuzz::require;

namespace {

void check(const Accelerator& accelerator)
{
    constexpr std::uint32_t modifiers =
        carbonModifier::shift | carbonModifier::control | carbonModifier::option | carbonModifier::command;
    require((accelerator.modifiers & ~modifiers) == 0);
    require((accelerator.keysym != 0) != accelerator.virtualKeyCode.has_value());
}

void check(const QList<Accelerator>& accelerators, qsizetype most)
{
    require(accelerators.size() <= most);
    for (const Accelerator& accelerator : accelerators)
        check(accelerator);
}

void checkPrintedVariant(const QString& text)
{
    qsizetype size = 0;
    for (const QString& string : stringsInVariant(text)) {
        size += string.size() + 2; // and its quotes
        if (const auto accelerator = parseGtkAccelerator(string))
            check(*accelerator);
    }
    require(size <= text.size());
}

/// Each line is a property with its value.
QVariantMap properties(const QString& text)
{
    QVariantMap properties;
    for (const QString& line : text.split(u'\n')) {
        const QString value = line.section(u'=', 1);
        const bool isBoolean = value == QLatin1String("true");
        properties.insert(line.section(u'=', 0, 0), isBoolean ? QVariant(true) : QVariant(value));
    }
    return properties;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    for (const auto& accelerator : {parseGtkAccelerator(text), parseKdeAccelerator(text)}) {
        if (accelerator)
            check(*accelerator);
    }
    checkPrintedVariant(text);
    check(parseKdeShortcutsFile(text), text.size());
    const QVariantMap xfce = properties(text);
    check(acceleratorsOfXfconf(xfce), xfce.size());
    return 0;
}
