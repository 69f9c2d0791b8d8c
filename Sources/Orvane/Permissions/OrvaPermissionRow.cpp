#include "Orvane/Permissions/OrvaPermissionRow.h"

#include "Orvane/Brand/ShellText.h"
#include "Orvane/Home/OrvaRowSymbol.h"
#include "OrvaneCore/Permissions/PermissionManager.h"
#include "OrvaneKit/Model/OrvaBox.h"
#include "OrvaneKit/Model/OrvaLayout.h"
#include "OrvaneKit/Model/OrvaPage.h"
#include "OrvaneKit/Model/OrvaRows.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

namespace orvane {

namespace {

constexpr int rowH = static_cast<int>(Orva::rowH);
constexpr int rowV = static_cast<int>(Orva::rowV);
constexpr int symbolGap = 12;
constexpr int badgeGap = 8;
constexpr int captionGap = 2;
constexpr int buttonGap = 8 - 2 * orvaRingMargin;
constexpr int trailingGap = 16 - orvaRingMargin;

/// The parts of a row.
class Parts {
public:
    explicit Parts(const OrvaPermissionRow& row) : m_row(row) {}

    [[nodiscard]] AnyView statusSymbol() const
    {
        return OrvaRowSymbol{.systemImage =
                                 byStatus(QStringLiteral("checkmark.circle.fill"), QStringLiteral("circle")),
                             .color = byStatus(OrvaColor::green, OrvaColor::secondary),
                             .meaning = byStatus(ShellText::tr("Granted"), ShellText::tr("Not granted"))};
    }

    /// Returns the name and level above the note.
    [[nodiscard]] AnyView text() const
    {
        const OrvaBox head{
            .spacing = badgeGap,
            .content = {OrvaText{displayName(m_row.permission)}, {levelBadge(), Qt::AlignVCenter}},
            .endsFree = true};
        const OrvaText note{noteOrReason(), OrvaFont::caption, OrvaColor::secondary, OrvaTextLines::balanced};
        // Buttons have room for their focus rings; the text keeps the same distance from the row's edges.
        return OrvaBox{.axis = OrvaBox::Axis::column,
                       .spacing = captionGap,
                       .margins = QMargins(0, orvaRingMargin, 0, orvaRingMargin),
                       .content = {OrvaBoxPart::rest(1), head, note, OrvaBoxPart::rest(1)}};
    }

    /// A missing permission says why it is missing, where that is known.
    [[nodiscard]] Live<QString> noteOrReason() const
    {
        const auto get = [permissions = m_row.permissions, permission = m_row.permission, note = m_row.note] {
            const QString reason = isGranted(permissions->status(permission))
                                       ? QString()
                                       : PermissionManager::denial(permission).reason;
            return reason.isEmpty() ? note : reason;
        };
        return Live<QString>(get, {m_row.permissions});
    }

    /// Empty without a level.
    [[nodiscard]] AnyView levelBadge() const
    {
        if (!m_row.level)
            return {};
        if (*m_row.level == PermissionRequirement::Level::required)
            return OrvaBadge{.text = ShellText::tr("Required"), .color = OrvaColor::primary};
        return OrvaBadge{.text = ShellText::tr("Optional")};
    }

    /// Ends where the buttons' outlines do, which have room for their focus rings beyond.
    [[nodiscard]] AnyView grantedMark() const
    {
        const OrvaBadge badge{.text = ShellText::tr("Granted"),
                              .systemImage = QStringLiteral("checkmark"),
                              .color = OrvaColor::green};
        return OrvaIf{byStatus(true, false),
                      OrvaBox{.margins = QMargins(0, 0, orvaRingMargin, 0), .content = {badge}}};
    }

    [[nodiscard]] AnyView grantButton() const
    {
        const OrvaButton grant{
            .title = ShellText::tr("Grant"),
            .action = [permissions = m_row.permissions,
                       permission = m_row.permission] { permissions->request(permission); },
            .accessibleDescription = displayName(m_row.permission)};
        return OrvaIf{whileMissing([](const auto& denial) { return denial.canBeRequested; }), grant};
    }

    /// A reason says what to do instead. Only a system without one has a page where it is given.
    [[nodiscard]] AnyView settingsButton() const
    {
        const OrvaButton settings{
            .title = ShellText::tr("Open System Settings"),
            .action = [permissions = m_row.permissions,
                       permission = m_row.permission] { permissions->openSettings(permission); },
            .systemImage = QStringLiteral("arrow.up.forward.app"),
            .accessibleDescription = displayName(m_row.permission)};
        return OrvaIf{whileMissing([](const auto& denial) { return denial.reason.isEmpty(); }),
                      OrvaBox{.margins = QMargins(buttonGap, 0, 0, 0), .content = {settings}}};
    }

private:
    [[nodiscard]] Live<bool> whileMissing(bool (*holds)(const Permissions::Denial& denial)) const
    {
        const auto get = [permissions = m_row.permissions, permission = m_row.permission, holds] {
            return !isGranted(permissions->status(permission)) &&
                   holds(PermissionManager::denial(permission));
        };
        return Live<bool>(get, {m_row.permissions});
    }

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

} // namespace

AnyView OrvaPermissionRow::body() const
{
    const Parts parts(*this);
    // Its height stays, so nothing below moves when the buttons give way to the mark.
    return OrvaBox{.margins =
                       QMargins(rowH, rowV - orvaRingMargin, rowH - orvaRingMargin, rowV - orvaRingMargin),
                   .content = {{parts.statusSymbol(), Qt::AlignVCenter},
                               OrvaBoxPart::gap(symbolGap),
                               OrvaBoxPart::filling(parts.text()),
                               OrvaBoxPart::gap(trailingGap),
                               {parts.grantedMark(), Qt::AlignVCenter},
                               {parts.grantButton(), Qt::AlignVCenter},
                               {parts.settingsButton(), Qt::AlignVCenter}},
                   .keepsHeight = true};
}

} // namespace orvane
