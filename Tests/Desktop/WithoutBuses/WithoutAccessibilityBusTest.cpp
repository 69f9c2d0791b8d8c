// A desktop whose accessibility bus isn't enabled.
#include "Desktop/Support/Bus.h"
#include "Desktop/Support/SnapZonesFixture.h"
#include "Support/Eventually.h"

#include <gmock/gmock.h>

namespace orvane::tests {
namespace {

bool busIsEnabled()
{
    return property(QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
                    QStringLiteral("org.a11y.Status"), QStringLiteral("IsEnabled"))
        .toBool();
}

class WithoutAccessibilityBusTest : public SnapZonesDesktopTest {};

} // namespace

TEST_F(WithoutAccessibilityBusTest, SnapZonesWorksAndNothingIsSwitchedOnForTheWholeDesktop)
{
    ASSERT_FALSE(busIsEnabled());
    startSnapping();
    const Target target = open(WindowKind::qt, initial);
    ASSERT_NE(target.window, 0u);
    pressShortcut(Zone::leftHalf);
    EXPECT_TRUE(comesToFill(target, placeOf(Zone::leftHalf, m_windows.workArea(primary))));
    EXPECT_FALSE(busIsEnabled());
}

} // namespace orvane::tests
