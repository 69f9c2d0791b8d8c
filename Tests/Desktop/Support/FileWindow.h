// A window of the desktop's file manager with one folder, used by keys as a person does.
#pragma once

#include "Desktop/Support/Hardware.h"
#include "Desktop/Support/Windows.h"

#include <QString>

namespace orvane::tests {

class FileWindow {
public:
    /// Asks the file manager to open the folder. Throws std::runtime_error when no window comes.
    FileWindow(const QString& folder, Hardware& hardware);
    /// Closes the window.
    ~FileWindow();
    FileWindow(const FileWindow&) = delete;
    FileWindow& operator=(const FileWindow&) = delete;

    /// Selects the first files in the order of the view and copies them. True once the clipboard has that
    /// many.
    [[nodiscard]] bool copyFirst(int count);

private:
    [[nodiscard]] bool hasFocus() const;

    QString m_title;
    Hardware& m_hardware;
    Windows m_windows;
};

} // namespace orvane::tests
