#include "Orvane/Onboarding/WelcomeStepView.h"

#include "Orvane/Brand/OrvaneBrand.h"
#include "Orvane/Brand/ShellText.h"
#include "Orvane/Onboarding/OnboardingPageView.h"
#include "OrvaneKit/Model/OrvaBox.h"

namespace orvane {

namespace {

constexpr double badgeSize = 84;
constexpr double titleSize = 30;
constexpr double columnWidth = 560;
constexpr int textGap = 12;
constexpr int linkGap = 14;

} // namespace

AnyView WelcomeStep::body() const
{
    const AppIconBadge badge{.size = badgeSize, .shadow = BadgeShadow::soft};
    const OrvaneWordmark title{.size = titleSize, .lead = ShellText::tr("Welcome to ")};
    const OrvaText text{
        .text = ShellText::tr("Bring the Windows habits you miss to your Mac — window switching,\n"
                              "keyboard and mouse remapping, cut & paste, and more.\n"
                              "Turn on only the features you want."),
        .color = OrvaColor::secondary,
        .alignment = Qt::AlignHCenter};
    const OrvaTextButton link = OrvaneBrand::link(
        ShellText::tr("Learn more at %1").arg(OrvaneBrand::siteName), OrvaneBrand::websiteURL);
    return OnboardingGround{columnWidth, OrvaBox{.axis = OrvaBox::Axis::column,
                                                 .content = {OrvaBoxPart::rest(4),
                                                             {badge, Qt::AlignHCenter},
                                                             {title, Qt::AlignHCenter},
                                                             OrvaBoxPart::gap(textGap),
                                                             text,
                                                             OrvaBoxPart::gap(linkGap),
                                                             {link, Qt::AlignHCenter},
                                                             OrvaBoxPart::rest(5)}}};
}

} // namespace orvane
