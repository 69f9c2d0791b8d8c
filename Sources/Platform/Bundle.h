// The running program's own package: its name, version and place. Any thread; constant for the life of the
// process.
#pragma once

#include <QString>
#include <QVariant>

#include <optional>

namespace orvane {

class Bundle {
public:
    virtual ~Bundle() = default;

    [[nodiscard]] virtual std::optional<QString> identifier() const = 0;
    /// A value of the info dictionary, "CFBundleShortVersionString" among them; invalid when absent.
    [[nodiscard]] virtual QVariant infoValue(const QString& key) const = 0;
    /// Absolute path of the file that has to be opened to start the program again.
    [[nodiscard]] virtual QString path() const = 0;
};

} // namespace orvane
