// Lines and columns with all choices of alignment and space, from which composites are built.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"

#include <QMargins>

namespace orvane {

/// A view in a line or column, or room between two of them.
struct OrvaBoxPart {
    /// The part's share of the room that is left.
    enum class Fill {
        none,
        all,
        asItWants, // all, if its widget expands
    };

    /// An empty view makes no part.
    OrvaBoxPart(AnyView theView, Qt::Alignment theAlignment = {}, Fill theFill = Fill::none)
        : view(std::move(theView)), alignment(theAlignment), fill(theFill)
    {
    }
    template <class Component>
    requires(!std::is_same_v<Component, AnyView> && !std::is_same_v<Component, OrvaBoxPart>)
        OrvaBoxPart(Component component)
        : OrvaBoxPart(AnyView(std::move(component)))
    {
    }

    static OrvaBoxPart filling(AnyView view, Qt::Alignment alignment = {})
    {
        return {std::move(view), alignment, Fill::all};
    }
    /// In points, in addition to the spacing of the box.
    static OrvaBoxPart gap(int points)
    {
        OrvaBoxPart part{AnyView()};
        part.room = points;
        return part;
    }
    /// Takes room that is left, shared with others by weight.
    static OrvaBoxPart rest(int weight)
    {
        OrvaBoxPart part{AnyView()};
        part.weight = weight;
        return part;
    }

    AnyView view;
    Qt::Alignment alignment;
    Fill fill = Fill::none;
    int room = 0;
    int weight = 0;
};

struct OrvaBox {
    enum class Axis { line, column };

    Axis axis = Axis::line;
    double spacing = 0;
    QMargins margins = {};
    QList<OrvaBoxPart> content;
    /// Keeps the box as high as its highest part, hidden ones too, so that nothing below moves when parts
    /// come and go.
    bool keepsHeight = false;
    /// Room that no part fills stays free at the end of a line.
    bool endsFree = false;

    [[nodiscard]] QList<AnyView> children() const;
};

QWidget* makeOrvaWidget(const OrvaBox& box);

} // namespace orvane
