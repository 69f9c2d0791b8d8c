// The texts about how long the machine stays awake. Pure.
#pragma once

#include "Platform/Clock.h"

#include <QLocale>
#include <QTimeZone>

#include <optional>

namespace orvane::AwakeStatus {

/// Returns the status line, with the time of day in the locale's short style.
QString footnote(bool isAwake, std::optional<Clock::Date> expiresAt, const QLocale& locale,
                 const QTimeZone& timeZone);
/// Returns the line for a wish that can't be carried out yet.
QString pendingFootnote();

} // namespace orvane::AwakeStatus
