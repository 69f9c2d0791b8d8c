// A line or paragraph of text in one of the kit's roles and colours, which wraps at its width.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QLabel>

namespace orvane {

class OrvaTextView : public OrvaThemed<QLabel> {
public:
    /// A single line keeps its width, and its digits are equally wide: for short values that change.
    enum class Wrapping { paragraph, singleLine };

    /// Empty text takes no room: the view hides itself.
    OrvaTextView(const Live<QString>& text, OrvaFont font, OrvaColor color,
                 Wrapping wrapping = Wrapping::paragraph);

    void setColor(OrvaColor color);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    void themeChanged() override;
    void paintEvent(QPaintEvent* event) override;

private:
    void show(const QString& text);
    [[nodiscard]] double lineWidth() const;
    [[nodiscard]] double digitWidth() const;
    void paintSingleLine(QPainter& painter) const;

    OrvaFont m_font;
    OrvaColor m_color;
    Wrapping m_wrapping;
    Cancellables m_cancellables;
};

} // namespace orvane
