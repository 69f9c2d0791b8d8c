#include "Capabilities/ClipboardHistory/ClipboardHistorySettingsPane.h"

#include "OrvaneKit/Model/OrvaRows.h"
#include "OrvaneKit/Model/OrvaSection.h"

namespace orvane {

namespace {

using Settings = std::shared_ptr<ClipboardHistorySettings>;

AnyView historySection(const Settings& settings)
{
    const std::shared_ptr<ObservableObject> maxItems(settings, &settings->maxItems);
    const Live<QString> title(
        [settings] { return QStringLiteral("Keep up to %1 items").arg(settings->maxItems.get()); },
        {maxItems});
    return OrvaSection{
        .title = QStringLiteral("History"),
        .systemImage = QStringLiteral("clock.arrow.circlepath"),
        .content = {
            OrvaStepperRow{title, bind(settings, &ClipboardHistorySettings::maxItems), {20, 1000}, 20},
            OrvaToggleRow(QStringLiteral("Keep history after quitting"),
                          bind(settings, &ClipboardHistorySettings::persist))}};
}

AnyView captureSection(const Settings& settings)
{
    return OrvaSection{
        .title = QStringLiteral("What to Capture"),
        .systemImage = QStringLiteral("tray.full"),
        .content = {OrvaToggleRow(QStringLiteral("Capture text"),
                                  bind(settings, &ClipboardHistorySettings::captureText)),
                    OrvaToggleRow(QStringLiteral("Capture images"),
                                  bind(settings, &ClipboardHistorySettings::captureImages)),
                    OrvaToggleRow(QStringLiteral("Capture copied files"),
                                  bind(settings, &ClipboardHistorySettings::captureFiles)),
                    OrvaToggleRow(QStringLiteral("Skip items marked private by password managers"),
                                  bind(settings, &ClipboardHistorySettings::ignoreConcealed))}};
}

AnyView pastingSection(const Settings& settings)
{
    return OrvaSection{
        .title = QStringLiteral("Pasting"),
        .systemImage = QStringLiteral("doc.on.clipboard"),
        .content = {OrvaToggleRow(QStringLiteral("Automatically paste the chosen item"),
                                  bind(settings, &ClipboardHistorySettings::autoPaste),
                                  QStringLiteral("Needs Accessibility permission. When off, the item is "
                                                 "copied and you press ⌘V yourself."))}};
}

AnyView storageSection(std::function<void()> onClear)
{
    return OrvaSection{
        .title = QStringLiteral("Storage"),
        .systemImage = QStringLiteral("externaldrive"),
        .content = {OrvaRow{.content = {OrvaRowLabel{QStringLiteral("Clear all unpinned history")},
                                        OrvaButton{.title = QStringLiteral("Clear History"),
                                                   .action = std::move(onClear),
                                                   .role = OrvaButton::Role::destructive}}}}};
}

} // namespace

AnyView ClipboardHistorySettingsPane::make(std::shared_ptr<ClipboardHistorySettings> settings,
                                           std::function<void()> onClear)
{
    return OrvaPane{
        {historySection(settings), captureSection(settings), pastingSection(settings),
         storageSection(std::move(onClear)),
         OrvaCaptionText{QStringLiteral("Assign a shortcut to open the clipboard history popup in the "
                                        "Keyboard Shortcuts section above.")}}};
}

} // namespace orvane
