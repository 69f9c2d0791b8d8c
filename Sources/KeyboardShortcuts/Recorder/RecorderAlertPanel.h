// The warning that a shortcut can't be used: a sheet on the recorder's window, which waits for its one button
// while the rest of the program goes on.
#pragma once

#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QDialog>

namespace orvane::KeyboardShortcuts {

/// Deletes itself when it is dismissed. Show it with `open()`.
class RecorderAlertPanel final : public OrvaThemed<QDialog> {
public:
    /// Without an informative text the message stands alone.
    RecorderAlertPanel(const QString& message, const QString& informativeText, QWidget* window);

    [[nodiscard]] const QString& messageText() const { return m_messageText; }
    [[nodiscard]] const QString& informativeText() const { return m_informativeText; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_messageText;
    QString m_informativeText;
};

} // namespace orvane::KeyboardShortcuts
