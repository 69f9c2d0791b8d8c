// The small painted shapes of a page's head: chip, badge, icon tile, banner.
#pragma once

#include "OrvaneKit/Model/OrvaPage.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QWidget>

namespace orvane {

class OrvaSymbolView;
class OrvaTextView;

/// Paints the tile in `box`, whose size is used instead of the tile's own.
void paintOrvaIconTile(QPainter& painter, const OrvaIconTile& tile, const QRectF& box);

class OrvaChipView final : public OrvaThemed<QWidget> {
public:
    explicit OrvaChipView(const OrvaChip& chip);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Cancellables m_cancellables;
};

class OrvaBadgeView final : public OrvaThemed<QWidget> {
public:
    explicit OrvaBadgeView(const OrvaBadge& badge);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    OrvaColor m_color;
};

class OrvaIconTileView final : public OrvaThemed<QWidget> {
public:
    explicit OrvaIconTileView(const OrvaIconTile& tile);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    OrvaIconTile m_tile;
};

class OrvaBannerView final : public OrvaThemed<QWidget> {
public:
    explicit OrvaBannerView(OrvaColor color) : m_color(color) {}

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    OrvaColor m_color;
};

} // namespace orvane
