// Decodes text in the encodings that documents name: Windows code page numbers, and labels of the web.
#pragma once

#include <QByteArrayView>
#include <QString>

#include <memory>
#include <optional>

struct UConverter;

namespace orvane {

/// Any thread, but one at a time.
class CodePage {
public:
    /// Returns the encoding of a Windows code page; windows-1252 for an unknown number.
    static CodePage numbered(int number);
    /// Returns the encoding that pages mean by a label such as "iso-8859-1". Nothing for an unknown one.
    static std::optional<CodePage> labelled(QByteArrayView label);

    /// Bytes without a meaning become U+FFFD.
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
