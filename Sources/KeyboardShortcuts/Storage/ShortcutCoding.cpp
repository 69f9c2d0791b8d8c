#include "KeyboardShortcuts/Storage/ShortcutCoding.h"

#include "KeyboardShortcuts/Storage/JsonScanner.h"

#include <array>

namespace orvane::KeyboardShortcuts {

namespace {

struct Field {
    QStringView name;
    std::optional<std::int64_t> value;
};

using Fields = std::array<Field, 2>;

/// Reads a member's name: which of the fields it is, or null for any other. Nothing where no name stands.
std::optional<Field*> readName(JsonScanner& scanner, Fields& fields)
{
    const JsonScanner start = scanner;
    for (Field& field : fields) {
        scanner = start;
        const auto isField = scanner.string(field.name);
        if (!isField)
            return std::nullopt;
        if (*isField)
            return &field;
    }
    return nullptr;
}

/// Reads one member's value, into `field` if the member is the first of that name.
bool readValue(JsonScanner& scanner, Field* field)
{
    if (!field || field->value)
        return scanner.skipValue();
    field->value = scanner.integer();
    return field->value.has_value();
}

} // namespace

QString encode(const Shortcut& shortcut)
{
    return QStringLiteral("{\"carbonKeyCode\":%1,\"carbonModifiers\":%2}")
        .arg(shortcut.carbonKeyCode)
        .arg(shortcut.carbonModifiers);
}

std::optional<Shortcut> decode(QStringView text)
{
    Fields fields{Field{u"carbonKeyCode", {}}, Field{u"carbonModifiers", {}}};
    JsonScanner scanner(text);
    if (!scanner.skip(u'{'))
        return std::nullopt;
    do {
        const auto field = readName(scanner, fields);
        if (!field || !scanner.skip(u':') || !readValue(scanner, *field))
            return std::nullopt;
    } while (scanner.skip(u','));
    if (!scanner.skip(u'}') || !scanner.atEnd() || !fields[0].value || !fields[1].value)
        return std::nullopt;
    return Shortcut(*fields[0].value, *fields[1].value);
}

} // namespace orvane::KeyboardShortcuts
