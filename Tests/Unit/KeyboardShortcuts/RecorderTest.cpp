// The recorder as a part of a pane.
#include "KeyboardShortcuts/Recorder/Recorder.h"
#include "OrvaneKit/Model/OrvaRows.h"
#include "OrvaneKit/Model/OrvaSection.h"
#include "Unit/KeyboardShortcuts/RecorderFixture.h"

namespace {

using namespace orvane;
using namespace orvane::tests;
using KeyboardShortcuts::getShortcut;
using KeyboardShortcuts::Recorder;
using KeyboardShortcuts::Shortcut;

constexpr Shortcut controlSpace(49, 0x1000);

class RecorderTest : public RecorderFixture {
protected:
    KeyboardShortcuts::RecorderChange noteChange()
    {
        return [this](const std::optional<Shortcut>& shortcut) { changes.push_back(shortcut); };
    }
};

TEST_F(RecorderTest, IsFoundInThePaneThatItIsAPartOf)
{
    const AnyView pane(
        OrvaSection{.content = {AnyView(Recorder(QStringLiteral("Open Orvane"), named("app.openOrvane")))}});
    const auto recorders = pane.all<Recorder>();
    ASSERT_EQ(recorders.size(), 1);
    EXPECT_EQ(recorders.first()->name, named("app.openOrvane"));
    EXPECT_TRUE(recorders.first()->hasLabel);
    const auto labels = pane.all<OrvaRowLabel>();
    ASSERT_EQ(labels.size(), 1);
    EXPECT_EQ(labels.first()->title.get(), QStringLiteral("Open Orvane"));
}

TEST_F(RecorderTest, WithoutALabelItIsTheControlAlone)
{
    const Recorder recorder(named("toggle"));
    EXPECT_FALSE(recorder.hasLabel);
    EXPECT_TRUE(recorder.children().isEmpty());
    const auto widget = rendered(AnyView(recorder));
    EXPECT_TRUE(dynamic_cast<RecorderCocoa*>(widget.get()));
}

TEST_F(RecorderTest, IsDrivenWithoutADisplay)
{
    const Recorder recorder(named("toggle"), noteChange());
    EXPECT_EQ(recorder.text(), QString());
    recorder.set(controlSpace);
    EXPECT_EQ(recorder.text(), QStringLiteral("⌃Space"));
    EXPECT_EQ(getShortcut(named("toggle")), controlSpace);
    EXPECT_TRUE(isRegistered(controlSpace));
    recorder.set(std::nullopt);
    EXPECT_EQ(recorder.text(), QString());
    EXPECT_EQ(changes, (Changes{controlSpace, std::nullopt}));
}

TEST_F(RecorderTest, TheControlRecordsForTheNameAndTells)
{
    const auto widget = rendered(AnyView(Recorder(named("toggle"), noteChange())));
    auto* control = dynamic_cast<RecorderCocoa*>(widget.get());
    lines->addWidget(control);
    open();
    record(control);
    keyDown(Key::space, eventFlag::control);
    EXPECT_EQ(getShortcut(named("toggle")), controlSpace);
    EXPECT_EQ(changes, Changes{controlSpace});
    control->setParent(nullptr);
}

TEST_F(RecorderTest, ARowHasItsTitleOnTheLeftAndTheControlGoesByIt)
{
    const auto row = rendered(AnyView(Recorder(QStringLiteral("Open Orvane"), named("app.openOrvane"))));
    row->resize(500, row->sizeHint().height());
    row->show();
    EXPECT_EQ(shownTexts(*row), QStringList{QStringLiteral("Open Orvane")});
    const auto controls = all<RecorderCocoa>(*row);
    ASSERT_EQ(controls.size(), 1);
    EXPECT_EQ(controls.first()->accessibleName(), QStringLiteral("Open Orvane"));
    const auto* title = all<OrvaTextView>(*row).first();
    EXPECT_LT(title->mapTo(row.get(), QPoint(0, 0)).x(), controls.first()->x());
    EXPECT_EQ(controls.first()->geometry().right() + 1, 500 - 16 + orvaRingMargin)
        << "the box ends at the inset";
}

TEST_F(RecorderTest, AnyViewMayBeItsLabel)
{
    const Recorder recorder(AnyView(OrvaRowLabel{QStringLiteral("Record"), QStringLiteral("From anywhere")}),
                            named("toggle"), {}, QStringLiteral("Record"));
    const auto row = rendered(AnyView(recorder));
    EXPECT_EQ(shownTexts(*row), list({"Record", "From anywhere"}));
    EXPECT_EQ(all<RecorderCocoa>(*row).first()->accessibleName(), QStringLiteral("Record"));
}

} // namespace
