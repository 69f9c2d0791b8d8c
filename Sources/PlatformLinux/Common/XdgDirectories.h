// The user's base directories by the XDG base directory rules. Any thread; a value.
#pragma once

#include <QProcessEnvironment>
#include <QString>

#include <optional>

namespace orvane {

struct XdgDirectories {
    /// Absolute and without a slash at the end; absent where neither the variable nor a home gives one.
    std::optional<QString> config;
    std::optional<QString> data;
    std::optional<QString> cache = {};

    /// Reads the variables of an environment. A relative path in a variable is invalid and counts as not set.
    /// `accountHome` is the home for an environment that names none; it may be empty.
    static XdgDirectories from(const QProcessEnvironment& environment, const QString& accountHome);

    /// Reads this process's environment, and where that names no home, the account's from the user database.
    static XdgDirectories ofThisProcess();
};

} // namespace orvane
