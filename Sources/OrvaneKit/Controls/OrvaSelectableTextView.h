// A single line of text that can be marked and copied with mouse and keyboard.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QLineEdit>

namespace orvane {

/// Where room is short the middle gives way, until the text is marked: what is copied is the whole.
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
