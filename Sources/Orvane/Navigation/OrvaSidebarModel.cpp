#include "Orvane/Navigation/OrvaSidebarModel.h"

#include <algorithm>

namespace orvane {

QList<OrvaSidebarModel::Line> OrvaSidebarModel::linesOf(const QList<OrvaSidebarSection>& sections)
{
    QList<Line> lines;
    for (const OrvaSidebarSection& section : sections) {
        if (!section.title.isEmpty())
            lines.append({section.title, std::nullopt});
        for (const OrvaSidebarRow& row : section.rows)
            lines.append({{}, row});
    }
    return lines;
}

bool OrvaSidebarModel::hasShapeOf(const QList<Line>& lines) const
{
    return std::equal(m_lines.begin(), m_lines.end(), lines.begin(), lines.end(),
                      [](const Line& a, const Line& b) {
                          return a.heading == b.heading && a.row.has_value() == b.row.has_value() &&
                                 (!a.row || a.row->tag == b.row->tag);
                      });
}

void OrvaSidebarModel::setSections(const QList<OrvaSidebarSection>& sections)
{
    const QList<Line> lines = linesOf(sections);
    if (!hasShapeOf(lines)) {
        beginResetModel();
        m_lines = lines;
        endResetModel();
        return;
    }
    for (int row = 0; row < lines.size(); ++row) {
        if (m_lines.at(row) == lines.at(row))
            continue;
        m_lines[row] = lines.at(row);
        Q_EMIT dataChanged(index(row), index(row));
    }
}

const OrvaSidebarRow* OrvaSidebarModel::at(int row) const
{
    const auto& line = m_lines.at(row).row;
    return line ? &*line : nullptr;
}

int OrvaSidebarModel::rowOf(const QString& tag) const
{
    const auto found = std::find_if(m_lines.begin(), m_lines.end(),
                                    [&](const Line& line) { return line.row && line.row->tag == tag; });
    return found == m_lines.end() ? -1 : static_cast<int>(found - m_lines.begin());
}

int OrvaSidebarModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_lines.size());
}

QVariant OrvaSidebarModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const OrvaSidebarRow* row = at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return row ? row->title : m_lines.at(index.row()).heading;
    case Qt::AccessibleDescriptionRole:
        return row && row->status ? row->status->text : QString();
    default:
        return {};
    }
}

Qt::ItemFlags OrvaSidebarModel::flags(const QModelIndex& index) const
{
    if (!index.isValid() || isHeading(index.row()))
        return Qt::ItemNeverHasChildren;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
}

} // namespace orvane
