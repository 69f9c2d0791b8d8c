#include "Capabilities/ImageResizer/ImageResizerCapability.h"
#include "Capabilities/ImageResizer/ResizerRows.h"
#include "Capabilities/ImageResizer/ResizerView.h"
#include "Fakes/FakePlatform.h"
#include "OrvaneKit/Model/OrvaLayout.h"

#include <QDragEnterEvent>
#include <QMimeData>
#include <QWidget>

#include <gtest/gtest.h>

#include <algorithm>

namespace orvane::tests {

namespace {

const QString id = QStringLiteral("net.lindenrow.orvane.imageresizer");

struct ImageResizerCapabilityTest : ::testing::Test {
    FakePlatform fake;
    CapabilityContext context{.id = {id},
                              .preferences = ScopedPreferences(fake.defaults, id),
                              .permissions = nullptr,
                              .serviceHost = std::make_shared<ServiceHost>(),
                              .eventTap = nullptr,
                              .logger = Log::make(id),
                              .appInfo = {}};
    std::shared_ptr<ImageResizerCapability> capability = std::make_shared<ImageResizerCapability>();
};

struct ResizerViewTest : ::testing::Test {
    QList<QString> buttonTitles()
    {
        QList<QString> titles;
        for (const auto& button : view.all<OrvaButton>())
            titles.append(button->title.get());
        return titles;
    }
    std::shared_ptr<const OrvaButton> button(const QString& title)
    {
        for (const auto& each : view.all<OrvaButton>()) {
            if (each->title.get() == title)
                return each;
        }
        ADD_FAILURE() << "no button " << title.toStdString();
        return nullptr;
    }
    void addPicture(const QString& name)
    {
        fake.pictures.add(QStringLiteral("/a/") + name, {4000, 3000});
        model->add({QUrl::fromLocalFile(QStringLiteral("/a/") + name)});
    }
    void step()
    {
        fake.runLoop.drainDetached();
        fake.runLoop.drain();
    }

    FakePlatform fake;
    std::shared_ptr<ImageResizerSettings> settings =
        std::make_shared<ImageResizerSettings>(ScopedPreferences(fake.defaults, id));
    std::shared_ptr<ResizerModel> model = std::make_shared<ResizerModel>(settings);
    ResizerView content{model};
    AnyView view{content};
};

QStringList rowTitles(const AnyView& view)
{
    QStringList titles;
    for (const auto& row : view.all<OrvaPickerRow>())
        titles.append(row->title);
    for (const auto& row : view.all<OrvaToggleRow>())
        titles.append(row->title.get());
    return titles;
}

} // namespace

TEST_F(ImageResizerCapabilityTest, Metadata)
{
    const CapabilityMetadata& metadata = ImageResizerCapability::metadata();
    EXPECT_EQ(metadata.id.rawValue, id);
    EXPECT_EQ(metadata.displayName, QStringLiteral("Image Resizer"));
    EXPECT_EQ(metadata.summary,
              QStringLiteral("Drop images and batch-resize them to a preset or custom size — saved "
                             "next to the originals."));
    EXPECT_EQ(metadata.symbolName, QStringLiteral("photo.on.rectangle.angled"));
    EXPECT_EQ(metadata.category, CapabilityCategory::finder);
    EXPECT_TRUE(capability->permissionRequirements().isEmpty());
}

TEST_F(ImageResizerCapabilityTest, TheHotkeyAndTheMenuShowTheWindow)
{
    ASSERT_EQ(capability->hotkeyActions().size(), 1);
    const HotkeyAction action = capability->hotkeyActions().first();
    EXPECT_EQ(action.id, QStringLiteral("imageresizer.open"));
    EXPECT_EQ(action.title, QStringLiteral("Open Image Resizer"));
    action.handler(); // nothing is there yet
    EXPECT_TRUE(capability->menuBarContributions().isEmpty());

    capability->activate(context);
    ASSERT_EQ(capability->menuBarContributions().size(), 1);
    const MenuBarItem item = capability->menuBarContributions().first();
    EXPECT_EQ(item.id, QStringLiteral("imageresizer.open"));
    EXPECT_EQ(item.title, QStringLiteral("Image Resizer…"));
    EXPECT_EQ(item.systemImage, QStringLiteral("photo.on.rectangle.angled"));
}

TEST_F(ImageResizerCapabilityTest, UninstallingRemovesTheSettings)
{
    ScopedPreferences(fake.defaults, id).set(QStringLiteral("phone"), QStringLiteral("preset"));
    capability->activate(context);
    capability->uninstall(context);
    EXPECT_EQ(ImageResizerSettings(context.preferences).preset.get(), ResizePreset::medium);
}

TEST_F(ImageResizerCapabilityTest, ThePaneOpensTheWindowBeforeActivation)
{
    const AnyView pane = capability->makeSettingsPane(context);
    EXPECT_EQ(rowTitles(pane), (QStringList{QStringLiteral("Preset"), QStringLiteral("Save as"),
                                            QStringLiteral("Allow enlarging smaller images")}));
    ASSERT_EQ(pane.all<OrvaCalloutText>().size(), 1);
    EXPECT_EQ(pane.all<OrvaCalloutText>().first()->text.get(),
              QStringLiteral(
                  "Open the resizer (here, a shortcut, or the menu bar), drop images in, and resize. Resized "
                  "copies are saved next to the originals."));
    ASSERT_EQ(pane.all<OrvaButton>().size(), 1);
    EXPECT_EQ(pane.all<OrvaSliderRow>().size(), 0); // the quality is chosen in the window
}

TEST(ResizerWindowControllerTest, ClosingHidesAndTheListSurvives)
{
    FakePlatform fake;
    ResizerWindowController controller(
        std::make_shared<ImageResizerSettings>(ScopedPreferences(fake.defaults, id)));
    EXPECT_EQ(controller.window(), nullptr);
    controller.show();
    QWidget* const window = controller.window();
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->size(), QSize(460, 520));
    EXPECT_EQ(window->windowTitle(), QStringLiteral("Image Resizer"));
    controller.model()->add({QUrl::fromLocalFile(QStringLiteral("/a/a.png"))});
    window->close();
    EXPECT_FALSE(window->isVisible());
    controller.show();
    EXPECT_EQ(controller.window(), window);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(controller.model()->files.get().size(), 1);
}

TEST(ResizerWindowControllerTest, TakesDragsThatHoldAFile)
{
    FakePlatform fake;
    ResizerWindowController controller(
        std::make_shared<ImageResizerSettings>(ScopedPreferences(fake.defaults, id)));
    controller.show();
    const auto children = controller.window()->findChildren<QWidget*>();
    const auto target = std::ranges::find_if(children, &QWidget::acceptDrops);
    ASSERT_NE(target, children.end());
    const auto isTaken = [&](const QList<QUrl>& urls) {
        QMimeData data;
        data.setUrls(urls);
        QDragEnterEvent event({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(*target, &event);
        return event.isAccepted();
    };
    const QUrl file = QUrl::fromLocalFile(QStringLiteral("/a/a.png"));
    const QUrl page(QStringLiteral("https://example.org/a.png"));
    EXPECT_TRUE(isTaken({file}));
    EXPECT_TRUE(isTaken({page, file}));
    EXPECT_FALSE(isTaken({page}));
}

TEST_F(ResizerViewTest, ShowsTheCustomSizeAndTheQualityOnlyWhereTheyCount)
{
    const auto conditions = view.all<OrvaIf>();
    const auto isShown = [&](auto component) {
        using Component = decltype(component);
        return std::ranges::any_of(conditions, [](const auto& each) {
            return each->condition.get() && !each->content.template all<Component>().isEmpty();
        });
    };
    const ResizerNumberField field{{}, {}, bind(settings, &ImageResizerSettings::customWidth)};
    const OrvaSliderRow slider{{}, bind(settings, &ImageResizerSettings::quality), {0, 1}, {}, QString()};
    EXPECT_FALSE(isShown(field));
    EXPECT_FALSE(isShown(slider));
    settings->preset.set(ResizePreset::custom);
    settings->format.set(ResizeFormat::jpeg);
    EXPECT_TRUE(isShown(field));
    EXPECT_TRUE(isShown(slider));
    const auto quality = view.all<OrvaSliderRow>().first();
    EXPECT_EQ(quality->detail.get(), QStringLiteral("85%"));
    EXPECT_EQ(quality->range.lower, 0.3);
    EXPECT_EQ(quality->range.upper, 1.0);
    EXPECT_FALSE(quality->step);
    const auto fields = view.all<ResizerNumberField>();
    ASSERT_EQ(fields.size(), 2);
    EXPECT_EQ(fields[0]->prompt, QStringLiteral("W"));
    fields[1]->value.set(720);
    EXPECT_EQ(settings->customHeight.get(), 720);
}

TEST_F(ResizerViewTest, TheButtonsSayHowManyAndRestDuringABatch)
{
    EXPECT_FALSE(button(QStringLiteral("Clear"))->enabled.get());
    EXPECT_FALSE(button(QStringLiteral("Resize 0 Images"))->enabled.get());
    addPicture(QStringLiteral("a.png"));
    EXPECT_TRUE(button(QStringLiteral("Clear"))->enabled.get());
    const auto resize = button(QStringLiteral("Resize 1 Image"));
    ASSERT_TRUE(resize);
    EXPECT_TRUE(resize->enabled.get());
    addPicture(QStringLiteral("b.png"));
    EXPECT_EQ(resize->title.get(), QStringLiteral("Resize 2 Images"));
    resize->action();
    EXPECT_FALSE(resize->enabled.get());
    EXPECT_FALSE(button(QStringLiteral("Clear"))->enabled.get());
    step();
    step();
    EXPECT_TRUE(resize->enabled.get());
    button(QStringLiteral("Clear"))->action();
    EXPECT_TRUE(model->files.get().isEmpty());
}

TEST_F(ResizerViewTest, ABatchIsToldByCountAndCanBeCancelled)
{
    addPicture(QStringLiteral("a.png"));
    addPicture(QStringLiteral("b.png"));
    addPicture(QStringLiteral("c.png"));
    model->resizeAll();
    step();
    QStringList texts;
    for (const auto& text : view.all<OrvaText>())
        texts.append(text->text.get());
    EXPECT_TRUE(texts.contains(QStringLiteral("2 of 3")));
    EXPECT_TRUE(texts.contains(QStringLiteral("Resizing 3…")));
    EXPECT_EQ(view.all<ResizerProgressBar>().size(), 1);
    button(QStringLiteral("Cancel"))->action();
    step();
    EXPECT_FALSE(model->isWorking.get());
    EXPECT_EQ(model->status.get(), QStringLiteral("Resized 2 of 3 images — saved next to the originals."));
}

TEST_F(ResizerViewTest, TakesFilesThatAreDroppedAnywhere)
{
    const std::unique_ptr<QWidget> widget(view.makeWidget());
    QMimeData data;
    data.setUrls(
        {QUrl::fromLocalFile(QStringLiteral("/a/a.png")), QUrl::fromLocalFile(QStringLiteral("/a/a.pdf"))});
    QDragEnterEvent enter({5, 5}, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    enter.setDropAction(Qt::MoveAction);
    QCoreApplication::sendEvent(widget.get(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    EXPECT_EQ(enter.dropAction(), Qt::CopyAction); // a move would take them away
    EXPECT_TRUE(content.targeted->get());
    QDropEvent drop({5, 5}, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(widget.get(), &drop);
    EXPECT_TRUE(drop.isAccepted());
    EXPECT_FALSE(content.targeted->get());
    EXPECT_EQ(model->files.get(), QList{QUrl::fromLocalFile(QStringLiteral("/a/a.png"))});

    QMimeData text;
    text.setText(QStringLiteral("/a/b.png"));
    QDragEnterEvent other({5, 5}, Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
    other.ignore();
    QCoreApplication::sendEvent(widget.get(), &other);
    EXPECT_FALSE(other.isAccepted());
    EXPECT_FALSE(content.targeted->get());
}

} // namespace orvane::tests
