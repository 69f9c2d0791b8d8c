// A single line of text that can be marked and copied with mouse and keyboard.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QLineEdit>

namespace orvane {

/// Where room is short, the middle is left out until the text is marked. The whole text is copied.
class OrvaSelectableTextView final : public OrvaControl<QLineEdit> {
public:
    explicit OrvaSelectableTextView(const Live<QString>& text);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

    [[nodiscard]] bool isElided() const;

protected:
    void themeChanged() override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void showText(const QString& text);
    [[nodiscard]] double lineWidth() const;
    [[nodiscard]] QRectF textRect() const;

    Cancellables m_cancellables;
};

} // namespace orvane
