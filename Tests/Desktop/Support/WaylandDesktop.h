// A Wayland session beside the private desktop, without hardware: sway and its X server. It ends with the
// object.
#pragma once

#include <QMap>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace orvane::tests {

class WaylandDesktop {
public:
    WaylandDesktop();
    ~WaylandDesktop();
    WaylandDesktop(const WaylandDesktop&) = delete;
    WaylandDesktop& operator=(const WaylandDesktop&) = delete;

    /// True once its X server lets programs of this user in.
    [[nodiscard]] bool isReady();
    /// Replaces variables of the environment of a program that is to run on it.
    [[nodiscard]] QMap<QString, QString> environment() const;

private:
    [[nodiscard]] QString namesFile() const { return m_directory.filePath(QStringLiteral("names")); }

    QTemporaryDir m_directory;
    QProcess m_sway;
    QString m_waylandDisplay;
    QString m_display;
};

} // namespace orvane::tests
