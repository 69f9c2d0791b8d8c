// Reads through a JSON text without building anything of it. Strict; allocates nothing.
#pragma once

#include <QStringView>

#include <cstdint>
#include <optional>

namespace orvane::KeyboardShortcuts {

/// Each operation reads one thing at the present place, with the space before it. Once one has failed, the
/// place is of no use.
class JsonScanner {
public:
    explicit JsonScanner(QStringView text) : m_rest(text) {}

    /// Reads `character` if it is what comes next; else stays where it is.
    bool skip(char16_t character);
    bool atEnd();

    /// A member's name, and whether it is `name`. Nothing where no string stands.
    std::optional<bool> string(QStringView name);
    /// A number whose value is whole and has room in 64 bits, however it is written: 49, 49.0, 4.9e1.
    std::optional<std::int64_t> integer();
    /// Any value. False where none stands, and for one that is nested deeper than a sensible text.
    bool skipValue(int depth = 0);

private:
    struct Number;

    void skipSpace();
    char16_t peek() const { return m_rest.isEmpty() ? u'\0' : m_rest.front().unicode(); }
    char16_t take();
    std::optional<char16_t> escaped();
    bool digits(Number& number, bool behindPoint);
    bool exponent(Number& number);
    std::optional<Number> number();
    bool word(QStringView literal);
    bool skipContainer(char16_t end, int depth);

    QStringView m_rest;
};

} // namespace orvane::KeyboardShortcuts
