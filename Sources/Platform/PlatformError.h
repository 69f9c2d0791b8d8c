// The exception of a platform call that can't do what was asked: a text that may be shown to a person, and
// which of the three ways of failing it was.
#pragma once

#include <QString>

#include <stdexcept>

namespace orvane {

class PlatformError : public std::runtime_error {
public:
    enum class Kind { unsupported, notPermitted, failed };

    PlatformError(Kind kind, const QString& description)
        : std::runtime_error(description.toStdString()), m_kind(kind)
    {
    }

    [[nodiscard]] Kind kind() const { return m_kind; }

private:
    Kind m_kind;
};

} // namespace orvane
