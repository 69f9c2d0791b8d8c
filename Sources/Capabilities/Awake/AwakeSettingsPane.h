// The settings pane of Awake.
#pragma once

#include "Capabilities/Awake/AwakeController.h"
#include "OrvaneCore/Base/OrvaView.h"

#include <QLocale>
#include <QTimeZone>

namespace orvane {

class AwakeSettingsPane {
public:
    static AnyView make(std::shared_ptr<AwakeController> controller);

    /// The status line: how long the machine stays awake, the time of day in the locale's short style.
    static QString statusFootnote(bool isAwake, std::optional<Clock::Date> expiresAt, const QLocale& locale,
                                  const QTimeZone& timeZone);
};

} // namespace orvane
