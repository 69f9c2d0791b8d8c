// The window's content during an extraction: the picture of the display, dimmed but for the box, and a line
// of text near the top.
#pragma once

#include "Capabilities/TextExtractor/RegionSelectModel.h"

#include <QImage>
#include <QWidget>

namespace orvane {

class RegionSelectView : public QWidget {
public:
    explicit RegionSelectView(std::shared_ptr<RegionSelectModel> model);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void selectionChanged();
    [[nodiscard]] QString message() const;
    [[nodiscard]] static QFont messageFont();
    [[nodiscard]] QRectF capsule() const;
    void paintPicture(QPainter& painter, const QRectF& part) const;
    void paintSelection(QPainter& painter, const QRectF& part) const;
    void paintMessage(QPainter& painter) const;

    std::shared_ptr<RegionSelectModel> m_model;
    /// A view of the model's pixels.
    QImage m_background;
    std::optional<QRectF> m_selection;
    Cancellables m_cancellables;
};

} // namespace orvane
