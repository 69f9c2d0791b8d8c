// The running program: its identifier, its version and the path of its executable.
#pragma once

#include "Platform/Bundle.h"

namespace orvane {

class ProgramBundle : public Bundle {
public:
    /// Looks the path of the executable up; an update that replaces the file later changes nothing.
    ProgramBundle();

    [[nodiscard]] std::optional<QString> identifier() const override;
    [[nodiscard]] QVariant infoValue(const QString& key) const override;
    [[nodiscard]] QString path() const override;

    /// Returns the path behind a process's "exe" link. When the file was replaced since the start, as by an
    /// update, it is the name under which the new one lies. Empty when the link can't be read.
    static QString executablePath(const QString& link);

private:
    QString m_path;
};

} // namespace orvane
