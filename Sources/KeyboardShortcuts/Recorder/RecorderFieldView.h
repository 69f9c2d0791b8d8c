// The look of a recorder: a box with a text in its middle, and a cross that clears it.
#pragma once

#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QAbstractButton>
#include <QString>
#include <QStringList>
#include <QWidget>

namespace orvane::KeyboardShortcuts {

class RecorderField : public OrvaControl<QWidget> {
public:
    /// The least width of the box, in points.
    static constexpr int leastWidth = 130;

    /// Returns the description of a shortcut, empty without one.
    [[nodiscard]] const QString& stringValue() const { return m_stringValue; }
    /// Returns the text that is shown in place of an empty one.
    [[nodiscard]] const QString& placeholder() const { return m_placeholder; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    enum class Highlight { none, ring };

    /// Is wide enough for each of the placeholders; the first one is shown.
    explicit RecorderField(const QStringList& placeholders);

    void setText(const QString& text);
    void setPlaceholder(const QString& placeholder);
    void setHighlight(Highlight highlight);
    /// Hidden unless there is text.
    QAbstractButton& cancelButton() { return *m_cancelButton; }

    void themeChanged() override;
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void placeCancelButton();
    [[nodiscard]] QRectF textRoom() const;

    QStringList m_placeholders;
    QString m_stringValue;
    QString m_placeholder;
    Highlight m_highlight = Highlight::none;
    QAbstractButton* m_cancelButton;
};

} // namespace orvane::KeyboardShortcuts
