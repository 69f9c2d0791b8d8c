// The rows of a sidebar in one list, headings between them.
#pragma once

#include "Orvane/Navigation/OrvaNavigation.h"

#include <QAbstractListModel>

namespace orvane {

/// Headings can be neither chosen nor reached by keys.
class OrvaSidebarModel final : public QAbstractListModel {
public:
    using QAbstractListModel::QAbstractListModel;

    /// Rows that stay keep their place in views, and only their changes are announced.
    void setSections(const QList<OrvaSidebarSection>& sections);

    /// Returns null for a heading.
    [[nodiscard]] const OrvaSidebarRow* at(int row) const;
    [[nodiscard]] bool isHeading(int row) const { return at(row) == nullptr; }
    /// Returns -1 when no row has the tag.
    [[nodiscard]] int rowOf(const QString& tag) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    struct Line {
        QString heading;
        std::optional<OrvaSidebarRow> row;

        friend bool operator==(const Line&, const Line&) = default;
    };

    static QList<Line> linesOf(const QList<OrvaSidebarSection>& sections);
    [[nodiscard]] bool hasShapeOf(const QList<Line>& lines) const;

    QList<Line> m_lines;
};

} // namespace orvane
