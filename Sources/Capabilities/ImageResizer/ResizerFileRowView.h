// The dropped files side by side, each a thumbnail with its name, 70 points wide.
#pragma once

#include "Capabilities/ImageResizer/ResizerThumbnails.h"

#include <QListView>

namespace orvane {

class ResizerFileRowView final : public QListView {
public:
    explicit ResizerFileRowView(std::shared_ptr<ResizerModel> model);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    class Files;

    void setUp();
    void remove(const QModelIndex& index);

    std::shared_ptr<ResizerModel> m_model;
    Files* m_files;
};

} // namespace orvane
