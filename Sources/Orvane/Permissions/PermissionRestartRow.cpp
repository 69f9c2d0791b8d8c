#include "Orvane/Permissions/PermissionRestartRow.h"

#include "Orvane/Brand/ShellText.h"
#include "Orvane/Home/OrvaRowSymbol.h"
#include "Orvane/Launch/AppRelaunch.h"
#include "OrvaneCore/Permissions/PermissionManager.h"
#include "OrvaneKit/Model/OrvaBox.h"
#include "OrvaneKit/Model/OrvaLayout.h"
#include "OrvaneKit/Model/OrvaRows.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

namespace orvane {

namespace {

constexpr int rowH = static_cast<int>(Orva::rowH);
constexpr int rowV = static_cast<int>(Orva::rowV) - orvaRingMargin;
constexpr int symbolGap = 12;
constexpr int buttonGap = 16 - orvaRingMargin;

} // namespace

AnyView PermissionRestartRow::body() const
{
    const OrvaText text{ShellText::tr("Granted it but still shows off? macOS applies new permissions only "
                                      "after Orvane restarts."),
                        OrvaFont::caption, OrvaColor::secondary, OrvaTextLines::balanced};
    const OrvaButton restart{.title = ShellText::tr("Quit & Reopen"), .action = &AppRelaunch::relaunch};
    const OrvaBox row{
        .margins = QMargins(rowH, rowV, rowH - orvaRingMargin, rowV),
        .content = {
            {OrvaRowSymbol{.systemImage = QStringLiteral("arrow.clockwise.circle")}, Qt::AlignVCenter},
            OrvaBoxPart::gap(symbolGap),
            // The button has room for its focus ring; the text keeps the same distance.
            OrvaBoxPart::filling(OrvaBox{.margins = QMargins(0, orvaRingMargin, 0, orvaRingMargin),
                                         .content = {OrvaBoxPart::filling(text)}},
                                 Qt::AlignVCenter),
            OrvaBoxPart::gap(buttonGap),
            {restart, Qt::AlignVCenter}}};
    if (!manager)
        return row;
    return OrvaIf{
        Live<bool>([list = permissions, manager = manager] { return manager->restartMayHelp(list); },
                   {manager}),
        row};
}

} // namespace orvane
