#include "Capabilities/DailyFrame/DailyFrameRows.h"

#include "Capabilities/DailyFrame/DailyFrameText.h"
#include "Capabilities/DailyFrame/Sources/BingSource.h"
#include "OrvaneKit/Model/OrvaLayout.h"
#include "OrvaneKit/Model/OrvaSettingRows.h"
#include "Platform/Platform.h"
#include "Platform/Workspace.h"

namespace orvane {

namespace {

using Controller = std::shared_ptr<DailyFrameController>;

/// A binding whose sets are followed by an action.
template <class T>
Binding<T> followedBy(const Binding<T>& binding, const std::function<void()>& action)
{
    return Binding<T>([binding] { return binding.get(); },
                      [binding, action](T value) {
                          binding.set(std::move(value));
                          action();
                      },
                      binding.sources());
}

template <class Property>
std::shared_ptr<ObservableObject> source(const Controller& controller,
                                         Property DailyFrameController::*property)
{
    return std::shared_ptr<Property>(controller, &((*controller).*property));
}

/// True while no job runs and the condition holds.
Live<bool> whenIdle(const Controller& controller, const std::function<bool()>& condition)
{
    const auto& settings = controller->settings();
    return Live<bool>([controller, condition] { return !controller->isWorking.get() && condition(); },
                      {source(controller, &DailyFrameController::isWorking),
                       std::shared_ptr<ObservableObject>(settings, &settings->source)});
}

AnyView creditLine(const WallpaperItem& item)
{
    if (!item.creditURL)
        return OrvaText{.text = item.credit, .font = OrvaFont::caption, .color = OrvaColor::secondary};
    const QString url = item.creditURL->toString(QUrl::FullyEncoded);
    return OrvaTextButton{
        .title = item.credit, .action = [url] { platform().sharedWorkspace.openURL(url); }, .help = url};
}

} // namespace

AnyView DailyFrameRows::credit(const Controller& controller)
{
    const auto& settings = controller->settings();
    const auto lines = [controller]() -> QList<OrvaForEach::Item> {
        const auto item = controller->current.get();
        if (!item || !controller->settings()->showCredit.get())
            return {};
        return {{item->id, creditLine(*item)}};
    };
    return OrvaForEach{Live<QList<OrvaForEach::Item>>(
        lines, {source(controller, &DailyFrameController::current),
                std::shared_ptr<ObservableObject>(settings, &settings->showCredit)})};
}

AnyView DailyFrameRows::buttons(const Controller& controller)
{
    const auto isAlways = [] { return true; };
    return OrvaHStack{
        8,
        {OrvaButton{.title = DailyFrameText::tr("Previous"),
                    .action = [controller] { controller->previous(); },
                    .systemImage = QStringLiteral("chevron.left"),
                    .enabled = whenIdle(controller, [controller] { return controller->canGoOlder(); })},
         OrvaButton{.title = DailyFrameText::tr("New Wallpaper"),
                    .action = [controller] { controller->changeNow(); },
                    .systemImage = QStringLiteral("arrow.triangle.2.circlepath"),
                    .enabled = whenIdle(controller, isAlways)},
         OrvaButton{.title = DailyFrameText::tr("Next"),
                    .action = [controller] { controller->next(); },
                    .systemImage = QStringLiteral("chevron.right"),
                    .enabled = whenIdle(controller, [controller] { return controller->canGoNewer(); })},
         OrvaSpacer{}}};
}

AnyView DailyFrameRows::banner(const Controller& controller)
{
    const auto isThere = [](const std::optional<QString>& text) { return text.has_value(); };
    const auto inWords = [](const std::optional<QString>& text) { return text.value_or(QString()); };
    return OrvaIf{
        live(controller, &DailyFrameController::statusMessage, isThere),
        OrvaStatusBanner{.kind = OrvaStatusBanner::Kind::warning,
                         .message = live(controller, &DailyFrameController::statusMessage, inWords)}};
}

AnyView DailyFrameRows::sourcePicker(const Controller& controller)
{
    const auto reload = [controller] { controller->reloadForSourceChange(); };
    return OrvaPickerRow{DailyFrameText::tr("Wallpaper source"),
                         followedBy(bindName(controller->settings(), &DailyFrameSettings::source), reload),
                         options<SourceKind>()};
}

AnyView DailyFrameRows::regionPicker(const Controller& controller)
{
    const auto& settings = controller->settings();
    QList<OrvaPickerOption> markets;
    for (const BingSource::Market& market : BingSource::markets)
        markets.append({market.label.translated(), market.code});
    const auto reload = [controller] { controller->reloadForSourceChange(); };
    const auto hasRegions = [](SourceKind kind) { return kind == SourceKind::bing; };
    return OrvaIf{live(settings, &DailyFrameSettings::source, hasRegions),
                  OrvaPickerRow{DailyFrameText::tr("Region"),
                                followedBy(bind(settings, &DailyFrameSettings::bingMarket), reload),
                                markets}};
}

AnyView DailyFrameRows::allDisplaysToggle(const Controller& controller)
{
    const auto reapply = [controller] { controller->reapplyCurrent(); };
    return OrvaToggleRow(
        DailyFrameText::tr("Apply to all displays"),
        followedBy(bind(controller->settings(), &DailyFrameSettings::applyToAllDisplays), reapply));
}

} // namespace orvane
