#include "Capabilities/Awake/AwakeStatus.h"

#include "Capabilities/Awake/AwakeText.h"

#include <QDateTime>

namespace orvane::AwakeStatus {

namespace {

QString shortTime(Clock::Date date, const QLocale& locale, const QTimeZone& timeZone)
{
    const auto milliseconds =
        std::chrono::duration_cast<std::chrono::milliseconds>(date.time_since_epoch()).count();
    const QDateTime local = QDateTime::fromMSecsSinceEpoch(milliseconds, timeZone);
    QString format = locale.timeFormat(QLocale::ShortFormat);
    // The C locale and a few others count seconds even in their short format.
    format.remove(QLatin1String(":ss")).remove(QLatin1String(".ss"));
    return locale.toString(local.time(), format);
}

} // namespace

QString footnote(bool isAwake, std::optional<Clock::Date> expiresAt, const QLocale& locale,
                 const QTimeZone& timeZone)
{
    if (!isAwake)
        return AwakeText::tr("Your Mac sleeps normally.");
    if (!expiresAt)
        return AwakeText::tr("Awake until you turn it off.");
    return AwakeText::tr("Awake until %1.").arg(shortTime(*expiresAt, locale, timeZone));
}

QString pendingFootnote()
{
    return AwakeText::tr("Your Mac can't be kept awake at the moment. Orvane keeps trying.");
}

} // namespace orvane::AwakeStatus
