#include "Orvane/Onboarding/WelcomeStepView.h"

#include "Orvane/Brand/OrvaneBrand.h"
#include "Orvane/Onboarding/OnboardingPageView.h"
#include "OrvaneKit/Controls/OrvaTextView.h"

#include <QVBoxLayout>

namespace orvane {

namespace {

constexpr double badgeSize = 84;
constexpr double titleSize = 30;
constexpr double columnWidth = 560;
constexpr int textGap = 12;
constexpr int linkGap = 14;

AppIconBadge badge()
{
    return {.size = badgeSize, .shadow = BadgeShadow::soft};
}

OrvaneWordmark title()
{
    return {.size = titleSize, .lead = QStringLiteral("Welcome to ")};
}

OrvaText text()
{
    return {QStringLiteral("Bring the Windows habits you miss to your Mac — window switching,\n"
                           "keyboard and mouse remapping, cut & paste, and more.\n"
                           "Turn on only the features you want."),
            OrvaFont::body, OrvaColor::secondary};
}

OrvaTextButton link()
{
    return OrvaneBrand::link(QStringLiteral("Learn more at ") + OrvaneBrand::siteName,
                             OrvaneBrand::websiteURL);
}

} // namespace

QList<AnyView> WelcomeStep::children() const
{
    return {badge(), title(), text(), link()};
}

QWidget* makeOrvaWidget(const WelcomeStep&)
{
    auto* column = new QWidget;
    auto* lines = new QVBoxLayout(column);
    lines->setContentsMargins(0, 0, 0, 0);
    lines->setSpacing(0);
    lines->addStretch(4);
    lines->addWidget(makeOrvaWidget(badge()), 0, Qt::AlignHCenter);
    lines->addWidget(makeOrvaWidget(title()), 0, Qt::AlignHCenter);
    lines->addSpacing(textGap);
    auto* words = new OrvaTextView(text().text, text().font, text().color);
    words->setAlignment(Qt::AlignHCenter);
    lines->addWidget(words);
    lines->addSpacing(linkGap);
    lines->addWidget(makeOrvaWidget(link()), 0, Qt::AlignHCenter);
    lines->addStretch(5);
    return makeOnboardingGround(column, columnWidth);
}

} // namespace orvane
