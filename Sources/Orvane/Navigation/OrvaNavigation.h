// Parts of a window of pages: a sidebar beside a page, the change of pages, their ticking and scrolling.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"
#include "OrvaneKit/Model/OrvaPage.h"
#include "OrvaneKit/Theme/OrvaTheme.h"

#include <QString>

#include <chrono>
#include <functional>

namespace orvane {

/// A small round light; assistive technology reads `text`.
struct OrvaStatusDot {
    enum class Fill { hollow, filled };

    Fill fill = Fill::hollow;
    OrvaColor color = OrvaColor::secondary;
    QString text;

    friend bool operator==(const OrvaStatusDot&, const OrvaStatusDot&) = default;
};

struct OrvaSidebarRow {
    QString tag;
    QString title;
    QString systemImage;
    OrvaColor tileColor = OrvaColor::accent;
    std::optional<OrvaStatusDot> status = std::nullopt;

    friend bool operator==(const OrvaSidebarRow&, const OrvaSidebarRow&) = default;
};

/// Rows under a heading; an empty title shows none.
struct OrvaSidebarSection {
    QString title;
    QList<OrvaSidebarRow> rows;

    friend bool operator==(const OrvaSidebarSection&, const OrvaSidebarSection&) = default;
};

/// A list to choose a page from; `selection` holds the tag of a row. `label` is for assistive technology.
struct OrvaSidebar {
    static constexpr double tileSize = 20; // points

    QString label;
    Binding<QString> selection;
    Live<QList<OrvaSidebarSection>> content;
};

/// Two columns. `header` stands above the sidebar's list and doesn't scroll with it.
struct OrvaSplit {
    double minimumWidth; // of the sidebar, in points
    double idealWidth;
    AnyView header;
    AnyView sidebar;
    AnyView detail;

    [[nodiscard]] QList<AnyView> children() const { return {header, sidebar, detail}; }
};

/// Shows the result of `content` for the present key. An unequal key replaces it by a fresh view.
struct OrvaKeyed {
    Live<QString> key;
    std::function<AnyView(const QString& key)> content;

    [[nodiscard]] QList<AnyView> children() const;
};

/// Calls an action each time that its content becomes visible.
struct OrvaAppear {
    std::function<void()> onAppear;
    AnyView content;

    [[nodiscard]] QList<AnyView> children() const { return {content}; }
};

/// Calls an action each time that its content becomes visible, and another one at each interval from then on
/// until the content or its window is hidden. A minimized window doesn't count as hidden.
struct OrvaTicker {
    std::chrono::milliseconds interval;
    std::function<void()> onAppear;
    std::function<void()> onTick;
    AnyView content;

    [[nodiscard]] QList<AnyView> children() const { return {content}; }
};

/// A place that can be scrolled to.
struct OrvaAnchor {
    QString id;
    AnyView content;

    [[nodiscard]] QList<AnyView> children() const { return {content}; }
};

/// At each change of `requests` it scrolls its page until the anchor of this id stands at the top.
struct OrvaScrollReader {
    Live<int> requests;
    QString anchor;
    AnyView content;

    [[nodiscard]] QList<AnyView> children() const { return {content}; }
};

QWidget* makeOrvaWidget(const OrvaSidebar& sidebar);
QWidget* makeOrvaWidget(const OrvaSplit& split);
QWidget* makeOrvaWidget(const OrvaKeyed& keyed);
QWidget* makeOrvaWidget(const OrvaTicker& ticker);
QWidget* makeOrvaWidget(const OrvaAppear& appear);
QWidget* makeOrvaWidget(const OrvaAnchor& anchor);
QWidget* makeOrvaWidget(const OrvaScrollReader& reader);

} // namespace orvane
