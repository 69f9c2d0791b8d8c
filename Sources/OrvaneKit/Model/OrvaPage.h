// A page of the home window, and the parts of its head: icon tile, badge, chip, banner.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"
#include "OrvaneKit/Model/OrvaComposite.h"
#include "OrvaneKit/Theme/OrvaTheme.h"

#include <QString>

namespace orvane {

struct CapabilityState;

/// A vertically scrolling page, limited to `pageWidth`. While `contentEnabled` is false the content is dimmed
/// and doesn't react; header and banner do.
struct OrvaPage {
    Live<bool> contentEnabled = true;
    AnyView header = {};
    AnyView banner = {};
    AnyView content = {};

    [[nodiscard]] QList<AnyView> children() const;
};

/// An icon tile, title and subtitle, with `trailing` on the right; with `autoStart` a labelled switch, and
/// `accessory` beside it or on lines of its own below.
struct OrvaPageHeader {
    enum class AccessoryPlace { besideAutoStart, below };

    QString symbol;
    OrvaColor accent = OrvaColor::accent;
    QString title;
    QString subtitle = {};
    std::optional<Binding<bool>> autoStart = std::nullopt;
    QString autoStartTitle = {};
    Live<bool> autoStartEnabled = true;
    AnyView accessory = {};
    AccessoryPlace accessoryPlace = AccessoryPlace::besideAutoStart;
    AnyView trailing = {};

    [[nodiscard]] AnyView body() const;
    [[nodiscard]] QList<AnyView> children() const { return {body()}; }
};

struct OrvaStatusBanner {
    enum class Kind { ok, warning, error };

    Kind kind = Kind::ok;
    Live<QString> message;
    AnyView trailing = {};

    [[nodiscard]] AnyView body() const;
    [[nodiscard]] QList<AnyView> children() const { return {body()}; }
};

OrvaColor color(OrvaStatusBanner::Kind kind);
QString symbol(OrvaStatusBanner::Kind kind);

/// A small rounded label; `prominent` uses primary text, otherwise secondary.
struct OrvaChip {
    Live<QString> text;
    std::optional<QString> systemImage = std::nullopt;
    Live<bool> prominent = false;
};

/// A capsule of symbol and text in one colour.
struct OrvaBadge {
    QString text;
    std::optional<QString> systemImage = std::nullopt;
    OrvaColor color = OrvaColor::secondary;

    static OrvaBadge state(const CapabilityState& state);

    friend bool operator==(const OrvaBadge&, const OrvaBadge&) = default;
};

/// A rounded square of side `size` points with a white symbol.
struct OrvaIconTile {
    QString systemImage;
    double size = 28;
    OrvaColor color = OrvaColor::accent;
};

/// A switch without a visible label; assistive technology reads `accessibleName`.
struct OrvaSwitch {
    Binding<bool> isOn;
    QString accessibleName;
    Live<bool> enabled = true;
};

QWidget* makeOrvaWidget(const OrvaPage& page);
QWidget* makeOrvaWidget(const OrvaChip& chip);
QWidget* makeOrvaWidget(const OrvaBadge& badge);
QWidget* makeOrvaWidget(const OrvaIconTile& tile);
QWidget* makeOrvaWidget(const OrvaSwitch& control);

} // namespace orvane
