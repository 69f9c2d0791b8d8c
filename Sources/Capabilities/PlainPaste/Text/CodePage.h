// Text of the encodings that documents name: Windows code page numbers, and labels of the web.
#pragma once

#include <QByteArrayView>
#include <QString>

#include <memory>
#include <optional>

struct UConverter;

namespace orvane {

/// Any thread, one at a time.
class CodePage {
public:
    /// The encoding of a Windows code page; windows-1252 for a number that isn't known.
    static CodePage numbered(int number);
    /// The encoding that a page means by a label such as "iso-8859-1". Nothing for an unknown one.
    static std::optional<CodePage> labelled(QByteArrayView label);

    /// Bytes that mean nothing become U+FFFD.
    [[nodiscard]] QString decode(QByteArrayView bytes) const;

private:
    struct Closer {
        void operator()(UConverter* converter) const;
    };
    using Handle = std::unique_ptr<UConverter, Closer>;

    explicit CodePage(Handle converter) : m_converter(std::move(converter)) {}
    static Handle open(const char* name);

    Handle m_converter;
};

} // namespace orvane
