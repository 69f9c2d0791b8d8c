#include "Desktop/Support/FileWindow.h"

#include "Support/Eventually.h"

#include <QDir>
#include <QProcess>

#include <stdexcept>

namespace orvane::tests {

namespace {

qsizetype copiedFiles()
{
    QProcess process;
    process.start(QStringLiteral("xclip"),
                  {QStringLiteral("-o"), QStringLiteral("-selection"), QStringLiteral("clipboard"),
                   QStringLiteral("-t"), QStringLiteral("x-special/gnome-copied-files")});
    process.waitForFinished(5000);
    // The first line says whether the files are copied or cut.
    return process.readAllStandardOutput().trimmed().count('\n');
}

} // namespace

FileWindow::FileWindow(const QString& folder, Hardware& hardware)
    : m_title(QDir(folder).dirName() + QStringLiteral(" - Thunar")), m_hardware(hardware)
{
    // The program only asks the process that runs already, and ends.
    QProcess opening;
    opening.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    opening.start(QStringLiteral("thunar"), {folder});
    if (!opening.waitForFinished(15'000) || !eventually(15s, [this] { return hasFocus(); }))
        throw std::runtime_error("the file manager shows no window");
}

FileWindow::~FileWindow()
{
    if (!hasFocus())
        return;
    m_hardware.press("Control_L");
    m_hardware.tap("w");
    m_hardware.release("Control_L");
    (void)eventually(5s, [this] { return !m_windows.find(m_title); });
}

bool FileWindow::hasFocus() const
{
    const auto window = m_windows.find(m_title);
    return window && m_windows.active() == *window;
}

bool FileWindow::copyFirst(int count)
{
    // Until the folder is read, there is nothing to select.
    return eventually(15s, [&] {
        m_hardware.tap("Home");
        m_hardware.press("Shift_L");
        for (int i = 1; i < count; ++i)
            m_hardware.tap("Right");
        m_hardware.release("Shift_L");
        m_hardware.press("Control_L");
        m_hardware.tap("c");
        m_hardware.release("Control_L");
        return eventually(1s, [&] { return copiedFiles() == count; });
    });
}

} // namespace orvane::tests
