// Widgets side by side in as many lines as the width requires.
#pragma once

#include "Orvane/Shortcuts/ShortcutViews.h"

#include <QLayout>
#include <QWidget>

#include <memory>
#include <vector>

namespace orvane {

/// Each item keeps its own size; lines begin at the leading edge.
class OrvaWrapLayout final : public QLayout {
public:
    OrvaWrapLayout(int spacing, OrvaWrapColumns columns);
    ~OrvaWrapLayout() override;

    void addItem(QLayoutItem* item) override;
    [[nodiscard]] int count() const override { return static_cast<int>(m_items.size()); }
    [[nodiscard]] QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    [[nodiscard]] Qt::Orientations expandingDirections() const override { return Qt::Horizontal; }
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSize() const override;
    void setGeometry(const QRect& rect) override;

private:
    enum class Move { no, yes };

    /// Places the items and returns the height that they take.
    [[nodiscard]] int place(const QRect& rect, Move move) const;

    /// Returns 0 without columns.
    [[nodiscard]] int columnWidth() const;

    int m_gap;
    OrvaWrapColumns m_columns;
    std::vector<std::unique_ptr<QLayoutItem>> m_items;
};

class OrvaWrapView final : public QWidget {
public:
    explicit OrvaWrapView(const OrvaWrap& wrap);
};

} // namespace orvane
