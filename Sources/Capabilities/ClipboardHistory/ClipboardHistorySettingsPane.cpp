#include "Capabilities/ClipboardHistory/ClipboardHistorySettingsPane.h"

#include "OrvaneKit/Model/OrvaSettingRows.h"

namespace orvane::ClipboardHistorySettingsPane {

AnyView make(const std::shared_ptr<ClipboardHistorySettings>& settings, std::function<void()> onClear)
{
    using Settings = ClipboardHistorySettings;
    const auto keepUpTo = [](int count) { return QStringLiteral("Keep up to %1 items").arg(count); };
    const OrvaButton clear{.title = QStringLiteral("Clear History"),
                           .action = std::move(onClear),
                           .role = OrvaButton::Role::destructive};
    return OrvaPane{{
        section(QStringLiteral("History"), QStringLiteral("clock.arrow.circlepath"),
                {OrvaStepperRow{live(settings, &Settings::maxItems, keepUpTo),
                                bind(settings, &Settings::maxItems),
                                {20, 1000},
                                20},
                 toggleRow(settings, &Settings::persist, QStringLiteral("Keep history after quitting"))}),
        section(QStringLiteral("What to Capture"), QStringLiteral("tray.full"),
                {toggleRow(settings, &Settings::captureText, QStringLiteral("Capture text")),
                 toggleRow(settings, &Settings::captureImages, QStringLiteral("Capture images")),
                 toggleRow(settings, &Settings::captureFiles, QStringLiteral("Capture copied files")),
                 toggleRow(settings, &Settings::ignoreConcealed,
                           QStringLiteral("Skip items marked private by password managers"))}),
        section(
            QStringLiteral("Pasting"), QStringLiteral("doc.on.clipboard"),
            {toggleRow(settings, &Settings::autoPaste, QStringLiteral("Automatically paste the chosen item"),
                       QStringLiteral("Needs Accessibility permission. When off, the item is copied and you "
                                      "press ⌘V yourself."))}),
        section(QStringLiteral("Storage"), QStringLiteral("externaldrive"),
                {OrvaRow{.content = {OrvaRowLabel{QStringLiteral("Clear all unpinned history")}, clear}}}),
        OrvaCaptionText{QStringLiteral("Assign a shortcut to open the clipboard history popup in the "
                                       "Keyboard Shortcuts section above.")},
    }};
}

} // namespace orvane::ClipboardHistorySettingsPane
