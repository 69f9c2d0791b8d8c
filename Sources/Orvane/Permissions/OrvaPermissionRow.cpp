#include "Orvane/Permissions/OrvaPermissionRow.h"

#include "Orvane/Home/OrvaRowSymbol.h"
#include "OrvaneCore/Permissions/PermissionManager.h"
#include "OrvaneKit/Controls/OrvaBalancedTextView.h"
#include "OrvaneKit/Model/OrvaLayout.h"
#include "OrvaneKit/Model/OrvaPage.h"
#include "OrvaneKit/Model/OrvaRows.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>
#include <QWidget>

#include <algorithm>

namespace orvane {

namespace {

constexpr int rowH = static_cast<int>(Orva::rowH);
constexpr int rowV = static_cast<int>(Orva::rowV);
constexpr int symbolGap = 12;
constexpr int badgeGap = 8;
constexpr int captionGap = 2;
constexpr int buttonGap = 8 - 2 * orvaRingMargin;
constexpr int trailingGap = 16 - orvaRingMargin;

/// The parts of a row, as its tree shows them and its widget lays them out.
class Parts {
public:
    explicit Parts(const OrvaPermissionRow& row) : m_row(row) {}

    [[nodiscard]] AnyView statusSymbol() const
    {
        return OrvaRowSymbol{.systemImage =
                                 byStatus(QStringLiteral("checkmark.circle.fill"), QStringLiteral("circle")),
                             .color = byStatus(OrvaColor::green, OrvaColor::secondary),
                             .meaning = byStatus(QStringLiteral("Granted"), QStringLiteral("Not granted"))};
    }

    [[nodiscard]] AnyView name() const { return OrvaText{displayName(m_row.permission)}; }
    [[nodiscard]] OrvaText note() const
    {
        return OrvaText{m_row.note, OrvaFont::caption, OrvaColor::secondary};
    }

    /// Empty without a level.
    [[nodiscard]] AnyView levelBadge() const
    {
        if (!m_row.level)
            return {};
        if (*m_row.level == PermissionRequirement::Level::required)
            return OrvaBadge{.text = QStringLiteral("Required"), .color = OrvaColor::primary};
        return OrvaBadge{.text = QStringLiteral("Optional")};
    }

    [[nodiscard]] AnyView grantedMark() const
    {
        return OrvaIf{byStatus(true, false), OrvaBadge{.text = QStringLiteral("Granted"),
                                                       .systemImage = QStringLiteral("checkmark"),
                                                       .color = OrvaColor::green}};
    }

    [[nodiscard]] QList<AnyView> buttons() const
    {
        const auto permissions = m_row.permissions;
        const SystemPermission permission = m_row.permission;
        const OrvaButton grant{.title = QStringLiteral("Grant"),
                               .action = [=] { permissions->request(permission); }};
        const OrvaButton settings{.title = QStringLiteral("Open System Settings"),
                                  .action = [=] { permissions->openSettings(permission); },
                                  .systemImage = QStringLiteral("arrow.up.forward.app")};
        return {OrvaIf{byStatus(false, true), grant}, OrvaIf{byStatus(false, true), settings}};
    }

private:
    template <class T>
    [[nodiscard]] Live<T> byStatus(T granted, T otherwise) const
    {
        const auto get = [permissions = m_row.permissions, permission = m_row.permission,
                          granted = std::move(granted), otherwise = std::move(otherwise)] {
            return isGranted(permissions->status(permission)) ? granted : otherwise;
        };
        return Live<T>(get, {m_row.permissions});
    }

    const OrvaPermissionRow& m_row;
};

QLayout* makeText(const Parts& parts)
{
    auto* lines = new QVBoxLayout;
    lines->setSpacing(captionGap);
    lines->addStretch(1);
    auto* head = new QHBoxLayout;
    head->setSpacing(badgeGap);
    head->addWidget(parts.name().makeWidget());
    if (QWidget* badge = parts.levelBadge().makeWidget())
        head->addWidget(badge, 0, Qt::AlignVCenter);
    head->addStretch(1);
    lines->addLayout(head);
    lines->addWidget(new OrvaBalancedTextView(parts.note(), Qt::AlignLeft | Qt::AlignVCenter));
    lines->addStretch(1);
    return lines;
}

} // namespace

QList<AnyView> OrvaPermissionRow::children() const
{
    const Parts parts(*this);
    QList<AnyView> views{parts.statusSymbol(), parts.name()};
    if (const AnyView badge = parts.levelBadge())
        views.append(badge);
    views.append({parts.note(), parts.grantedMark()});
    views.append(parts.buttons());
    return views;
}

QWidget* makeOrvaWidget(const OrvaPermissionRow& row)
{
    const Parts parts(row);
    auto* widget = new QWidget;
    auto* line = new QHBoxLayout(widget);
    line->setContentsMargins(rowH, rowV - orvaRingMargin, rowH - orvaRingMargin, rowV - orvaRingMargin);
    line->setSpacing(0);
    line->addWidget(parts.statusSymbol().makeWidget(), 0, Qt::AlignVCenter);
    line->addSpacing(symbolGap);
    line->addLayout(makeText(parts), 1);
    line->addSpacing(trailingGap);
    // It ends where the buttons' outlines do, which have room for their focus rings beyond.
    auto* mark = new QHBoxLayout;
    mark->setContentsMargins(0, 0, orvaRingMargin, 0);
    mark->addWidget(parts.grantedMark().makeWidget(), 0, Qt::AlignVCenter);
    line->addLayout(mark);

    auto* asking = new QHBoxLayout;
    asking->setContentsMargins(0, 0, 0, 0);
    asking->setSpacing(buttonGap);
    int height = 0;
    for (const AnyView& view : parts.buttons()) {
        QWidget* button = view.makeWidget();
        // All rows have buttons of these names: what one is about is said with it.
        button->findChild<QPushButton*>()->setAccessibleDescription(displayName(row.permission));
        height = std::max(height, button->sizeHint().height());
        asking->addWidget(button, 0, Qt::AlignVCenter);
    }
    line->addLayout(asking);
    // Nothing below moves when the buttons give way to the mark.
    widget->setMinimumHeight(height + 2 * (rowV - orvaRingMargin));
    return widget;
}

} // namespace orvane
