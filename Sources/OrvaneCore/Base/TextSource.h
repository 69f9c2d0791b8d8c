// A text that a value or a table holds in its source form, to be translated where it is shown.
//
// Write it with parentheses and two literals, so that lupdate finds it:
//     TextSource("HourBellText", "Every hour")
#pragma once

#include <QCoreApplication>
#include <QString>

namespace orvane {

class TextSource {
public:
    /// No text.
    constexpr TextSource() = default;
    constexpr TextSource(const char* theContext, const char* theText) : m_context(theContext), m_text(theText)
    {
    }

    /// Returns the text as it stands in the code.
    [[nodiscard]] QString source() const { return QString::fromUtf8(m_text); }

    /// Returns the text in the language of the user; empty where there is none. Any thread.
    [[nodiscard]] QString translated() const
    {
        return m_text ? QCoreApplication::translate(m_context, m_text) : QString();
    }

private:
    const char* m_context = nullptr;
    const char* m_text = nullptr;
};

} // namespace orvane
