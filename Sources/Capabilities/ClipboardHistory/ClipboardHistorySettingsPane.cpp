#include "Capabilities/ClipboardHistory/ClipboardHistorySettingsPane.h"

#include "Capabilities/ClipboardHistory/ClipboardHistoryText.h"
#include "OrvaneKit/Model/OrvaSettingRows.h"

namespace orvane::ClipboardHistorySettingsPane {

AnyView make(const std::shared_ptr<ClipboardHistorySettings>& settings, std::function<void()> onClear)
{
    using Settings = ClipboardHistorySettings;
    const auto keepUpTo = [](int count) {
        return ClipboardHistoryText::tr("Keep up to %1 items").arg(count);
    };
    const OrvaButton clear{.title = ClipboardHistoryText::tr("Clear History"),
                           .action = std::move(onClear),
                           .role = OrvaButton::Role::destructive};
    return OrvaPane{{
        section(ClipboardHistoryText::tr("History"), QStringLiteral("clock.arrow.circlepath"),
                {OrvaStepperRow{live(settings, &Settings::maxItems, keepUpTo),
                                bind(settings, &Settings::maxItems),
                                {20, 1000},
                                20},
                 toggleRow(settings, &Settings::persist,
                           ClipboardHistoryText::tr("Keep history after quitting"))}),
        section(
            ClipboardHistoryText::tr("What to Capture"), QStringLiteral("tray.full"),
            {toggleRow(settings, &Settings::captureText, ClipboardHistoryText::tr("Capture text")),
             toggleRow(settings, &Settings::captureImages, ClipboardHistoryText::tr("Capture images")),
             toggleRow(settings, &Settings::captureFiles, ClipboardHistoryText::tr("Capture copied files")),
             toggleRow(settings, &Settings::ignoreConcealed,
                       ClipboardHistoryText::tr("Skip items marked private by password managers"))}),
        section(ClipboardHistoryText::tr("Pasting"), QStringLiteral("doc.on.clipboard"),
                {toggleRow(settings, &Settings::autoPaste,
                           ClipboardHistoryText::tr("Automatically paste the chosen item"),
                           ClipboardHistoryText::tr(
                               "Needs Accessibility permission. When off, the item is copied and you "
                               "press ⌘V yourself."))}),
        section(ClipboardHistoryText::tr("Storage"), QStringLiteral("externaldrive"),
                {OrvaRow{.content = {OrvaRowLabel{ClipboardHistoryText::tr("Clear all unpinned history")},
                                     clear}}}),
        OrvaCaptionText{
            ClipboardHistoryText::tr("Assign a shortcut to open the clipboard history popup in the "
                                     "Keyboard Shortcuts section above.")},
    }};
}

} // namespace orvane::ClipboardHistorySettingsPane
