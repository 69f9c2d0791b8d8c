#include "Capabilities/PlainPaste/PlainPasteCapability.h"
#include "Capabilities/PlainPaste/PlainPasteController.h"
#include "Fakes/FakePlatform.h"
#include "OrvaneCore/Input/SyntheticEvent.h"
#include "OrvaneKit/Model/OrvaRows.h"
#include "OrvaneKit/Model/OrvaSection.h"

#include <gtest/gtest.h>

using namespace orvane;

namespace {

const QString plainPasteID = QStringLiteral("net.lindenrow.orvane.plainpaste");
constexpr std::int64_t keyV = 9;

struct PlainPasteTest : testing::Test {
    PlainPasteTest() { fake.permissions.accessibility = true; }

    void press() { controller->pasteAsPlainText(); }
    /// Runs tasks and pool work by turns until nothing is left to do.
    void settle()
    {
        for (int turn = 0; turn < 10; ++turn) {
            fake.runLoop.drain();
            fake.runLoop.drainDetached();
        }
        fake.runLoop.drain();
    }
    void copy(const QMap<QString, QByteArray>& data) { fake.generalPasteboard.copy({.data = data}); }
    [[nodiscard]] const PasteboardContents& contents() const { return fake.generalPasteboard.contents(); }
    /// Returns nothing unless the pasteboard holds a text and nothing else.
    [[nodiscard]] std::optional<QString> onlyText() const
    {
        if (contents().types != QStringList{pasteboardType::string})
            return std::nullopt;
        return contents().stringForType(pasteboardType::string);
    }
    [[nodiscard]] std::size_t pastes() const { return fake.eventTaps.delivered.size() / 2; }

    FakePlatform fake;
    std::shared_ptr<PlainPasteSettings> settings =
        std::make_shared<PlainPasteSettings>(ScopedPreferences(fake.defaults, plainPasteID));
    std::shared_ptr<PlainPasteController> controller =
        PlainPasteController::make(settings, Log::make(plainPasteID));
};

const QByteArray rtf(R"({\rtf1\ansi{\b rich} text})");
const QByteArray html("<b>marked</b> text");

} // namespace

TEST_F(PlainPasteTest, ThePlainFlavourIsTakenAsItStands)
{
    copy({{pasteboardType::string, " as\tit \n stands\r\n"}, {pasteboardType::rtf, rtf}});
    press();
    settle();
    EXPECT_EQ(onlyText(), QStringLiteral(" as\tit \n stands\r\n"));
    EXPECT_EQ(pastes(), 1);
    EXPECT_EQ(fake.generalPasteboard.reads, 2) << "of it and of the own copy, none of the formatted flavours";
}

TEST_F(PlainPasteTest, AnEmptyPlainFlavourIsAText)
{
    copy({{pasteboardType::string, ""}, {pasteboardType::rtf, rtf}});
    press();
    settle();
    EXPECT_EQ(onlyText(), QString());
    EXPECT_EQ(pastes(), 1);
}

TEST_F(PlainPasteTest, RtfComesBeforeHtml)
{
    copy({{pasteboardType::rtf, rtf}, {pasteboardType::html, html}});
    press();
    settle();
    EXPECT_EQ(onlyText(), QStringLiteral("rich text"));
}

TEST_F(PlainPasteTest, HtmlStandsInForRtfThatCannotBeRead)
{
    copy({{pasteboardType::rtf, "not rtf"}, {pasteboardType::html, html}});
    press();
    settle();
    EXPECT_EQ(onlyText(), QStringLiteral("marked text"));
    EXPECT_EQ(pastes(), 1);
}

TEST_F(PlainPasteTest, HtmlAlone)
{
    copy({{pasteboardType::html, html}});
    press();
    settle();
    EXPECT_EQ(onlyText(), QStringLiteral("marked text"));
}

TEST_F(PlainPasteTest, APictureStaysAndNothingIsPasted)
{
    copy({{pasteboardType::png, "png"}});
    const int count = fake.generalPasteboard.changeCount();
    press();
    settle();
    EXPECT_EQ(fake.generalPasteboard.changeCount(), count);
    EXPECT_EQ(contents().types, QStringList{pasteboardType::png});
    EXPECT_EQ(pastes(), 0);
    EXPECT_EQ(fake.generalPasteboard.reads, 1);
}

TEST_F(PlainPasteTest, RtfThatCannotBeReadStaysWhenThereIsNothingElse)
{
    copy({{pasteboardType::rtf, "not rtf"}});
    press();
    settle();
    EXPECT_EQ(contents().dataForType(pasteboardType::rtf), QByteArray("not rtf"));
    EXPECT_EQ(pastes(), 0);
}

TEST_F(PlainPasteTest, AnEmptyPasteboardStaysEmpty)
{
    press();
    settle();
    EXPECT_EQ(fake.generalPasteboard.changeCount(), 0);
    EXPECT_EQ(pastes(), 0);
}

TEST_F(PlainPasteTest, AllOtherFlavoursAreLost)
{
    copy({{pasteboardType::string, "text"},
          {pasteboardType::html, html},
          {pasteboardType::png, "png"},
          {QStringLiteral("x-own"), "own"}});
    press();
    settle();
    EXPECT_EQ(onlyText(), QStringLiteral("text"));
}

TEST_F(PlainPasteTest, ThePasteIsAMarkedCommandVDownAndUp)
{
    fake.generalPasteboard.copyString(QStringLiteral("text"));
    press();
    settle();
    const auto& events = fake.eventTaps.delivered;
    ASSERT_EQ(events.size(), 2);
    EXPECT_EQ(events[0].type, EventType::keyDown);
    EXPECT_EQ(events[1].type, EventType::keyUp);
    for (const Event& event : events) {
        EXPECT_EQ(event.keycode, keyV);
        EXPECT_EQ(event.flags, eventFlag::command);
        EXPECT_TRUE(SyntheticEvent::isOurs(event));
    }
}

TEST_F(PlainPasteTest, ThePasteIsPostedOnceTheTextIsThere)
{
    struct Seen {
        FakePasteboard& pasteboard;
        QStringList texts;
    } seen{fake.generalPasteboard, {}};
    const auto tap = fake.eventTaps.tapCreate(
        EventTaps::Location::hid, EventTaps::Placement::headInsert, EventTaps::Options::listenOnly,
        eventMaskBit(EventType::keyDown) | eventMaskBit(EventType::keyUp),
        [](EventType, Event&, void* userInfo) {
            auto& there = *static_cast<Seen*>(userInfo);
            const auto text = there.pasteboard.contents().stringForType(pasteboardType::string);
            there.texts.append(text.value_or(QString()));
            return EventTapDecision::pass;
        },
        &seen);
    tap->addToMainRunLoop();
    tap->enable(true);
    copy({{pasteboardType::html, html}});
    press();
    settle();
    EXPECT_EQ(seen.texts, (QStringList{QStringLiteral("marked text"), QStringLiteral("marked text")}));
}

TEST_F(PlainPasteTest, ThePasteIsPostedOnceOthersGetTheText)
{
    std::optional<std::size_t> pastesBeforeTheRead;
    fake.permissions.onRead = [&] { // the text is written by now
        fake.runLoop.perform([&] { pastesBeforeTheRead = pastes(); });
    };
    fake.generalPasteboard.copyString(QStringLiteral("text"));
    press();
    settle();
    EXPECT_EQ(pastesBeforeTheRead, 0U);
    EXPECT_EQ(fake.generalPasteboard.reads, 2);
    EXPECT_EQ(pastes(), 1U);
}

TEST_F(PlainPasteTest, NothingIsPostedWhenThePasteboardRefusesTheText)
{
    fake.generalPasteboard.copyString(QStringLiteral("text"));
    fake.generalPasteboard.refusesWrites = true;
    press();
    settle();
    EXPECT_EQ(pastes(), 0U);
    fake.generalPasteboard.refusesWrites = false;
    fake.generalPasteboard.copyString(QStringLiteral("text"));
    press();
    settle();
    EXPECT_EQ(pastes(), 1U) << "the press has ended";
}

TEST_F(PlainPasteTest, WithoutTrustThePasteboardIsCleanedAndNothingPosted)
{
    fake.permissions.accessibility = false;
    copy({{pasteboardType::html, html}});
    press();
    settle();
    EXPECT_EQ(onlyText(), QStringLiteral("marked text"));
    EXPECT_EQ(pastes(), 0);
    EXPECT_TRUE(fake.permissions.requests.isEmpty());
}

TEST_F(PlainPasteTest, WithAutoPasteOffThePasteboardIsCleanedAndTrustNotAskedFor)
{
    bool wasRead = false;
    fake.permissions.onRead = [&] { wasRead = true; };
    settings->autoPaste.set(false);
    copy({{pasteboardType::html, html}});
    press();
    settle();
    EXPECT_EQ(onlyText(), QStringLiteral("marked text"));
    EXPECT_EQ(pastes(), 0);
    EXPECT_FALSE(wasRead);
}

TEST_F(PlainPasteTest, EachCleaningIsANewChange)
{
    fake.generalPasteboard.copyString(QStringLiteral("text"));
    const int count = fake.generalPasteboard.changeCount();
    press();
    settle();
    EXPECT_GT(fake.generalPasteboard.changeCount(), count);
}

// Presses while another program or the decoder is slow.

TEST_F(PlainPasteTest, ASecondPressWaitsItsTurn)
{
    copy({{pasteboardType::html, html}});
    press();
    press();
    EXPECT_EQ(fake.generalPasteboard.reads, 1);
    settle();
    EXPECT_EQ(pastes(), 2);
    EXPECT_EQ(onlyText(), QStringLiteral("marked text"));
    press();
    settle();
    EXPECT_EQ(pastes(), 3);
}

TEST_F(PlainPasteTest, PressesThatWaitAreDroppedWithTheOneThatFails)
{
    fake.generalPasteboard.copyString(QStringLiteral("text"));
    fake.generalPasteboard.setOwner(FakePasteboard::Owner::hangs);
    press();
    settle();
    press();
    press();
    settle();
    EXPECT_EQ(fake.generalPasteboard.reads, 1);
    fake.generalPasteboard.setOwner(FakePasteboard::Owner::fails);
    settle();
    EXPECT_EQ(fake.generalPasteboard.reads, 1);
    EXPECT_EQ(pastes(), 0);

    fake.generalPasteboard.setOwner(FakePasteboard::Owner::answers);
    press();
    settle();
    EXPECT_EQ(pastes(), 1) << "a later press works again";
}

TEST_F(PlainPasteTest, APressAfterANewCopyIsNotDroppedWithTheOneThatFails)
{
    fake.generalPasteboard.copyString(QStringLiteral("text"));
    fake.generalPasteboard.setOwner(FakePasteboard::Owner::hangs);
    press();
    settle();
    fake.generalPasteboard.copyString(QStringLiteral("newer"));
    press();
    press();
    fake.generalPasteboard.setOwner(FakePasteboard::Owner::fails);
    settle();
    EXPECT_EQ(fake.generalPasteboard.reads, 2) << "the new copy is asked for once, for all that waited";
    EXPECT_EQ(pastes(), 0);
    press();
    settle();
    EXPECT_EQ(fake.generalPasteboard.reads, 3) << "nothing waits any more";
}

TEST_F(PlainPasteTest, ACopyWhileTheDecoderIsAtWorkDoesNotReplaceWhatThePressIsAbout)
{
    copy({{pasteboardType::html, html}});
    press();
    fake.runLoop.drain();
    fake.generalPasteboard.copyString(QStringLiteral("newer"));
    settle();
    EXPECT_EQ(onlyText(), QStringLiteral("marked text"));
    EXPECT_EQ(pastes(), 1);
}

TEST_F(PlainPasteTest, DecodingIsNotTheMainThreadsWork)
{
    copy({{pasteboardType::rtf, rtf}});
    press();
    fake.runLoop.drain();
    EXPECT_EQ(contents().types, QStringList{pasteboardType::rtf});
    fake.runLoop.drainDetached();
    EXPECT_EQ(contents().types, QStringList{pasteboardType::rtf});
    fake.runLoop.drain();
    EXPECT_EQ(onlyText(), QStringLiteral("rich text"));
}

TEST_F(PlainPasteTest, AnEndedControllerLeavesThePasteboardAlone)
{
    copy({{pasteboardType::html, html}});
    press();
    fake.runLoop.drain();
    controller.reset();
    settle();
    EXPECT_EQ(contents().types, QStringList{pasteboardType::html});

    controller = PlainPasteController::make(settings, Log::make(plainPasteID));
    press();
    controller.reset();
    settle();
    EXPECT_EQ(contents().types, QStringList{pasteboardType::html});
    EXPECT_EQ(pastes(), 0);
}

// The capability.

namespace {

struct PlainPasteCapabilityTest : PlainPasteTest {
    CapabilityContext context{.id = {plainPasteID},
                              .preferences = ScopedPreferences(fake.defaults, plainPasteID),
                              .permissions = nullptr,
                              .serviceHost = std::make_shared<ServiceHost>(),
                              .eventTap = nullptr,
                              .logger = Log::make(plainPasteID),
                              .appInfo = {}};
    std::shared_ptr<PlainPasteCapability> capability = std::make_shared<PlainPasteCapability>();
};

} // namespace

TEST_F(PlainPasteCapabilityTest, WhatItDeclares)
{
    const CapabilityMetadata& metadata = PlainPasteCapability::metadata();
    EXPECT_EQ(metadata.id.rawValue, plainPasteID);
    EXPECT_EQ(metadata.displayName, QStringLiteral("Paste as Plain Text"));
    EXPECT_EQ(metadata.summary, QStringLiteral("A hotkey that pastes your clipboard with all fonts, colors, "
                                               "and styles stripped away."));
    EXPECT_EQ(metadata.symbolName, QStringLiteral("doc.plaintext"));
    EXPECT_EQ(metadata.category, CapabilityCategory::system);

    const auto requirements = capability->permissionRequirements();
    ASSERT_EQ(requirements.size(), 1);
    EXPECT_EQ(requirements[0].permission, SystemPermission::accessibility);
    EXPECT_EQ(requirements[0].level, PermissionRequirement::Level::optional);
    EXPECT_EQ(requirements[0].note, QStringLiteral("Paste the cleaned text automatically. Without it, the "
                                                   "clipboard is cleaned and you press ⌘V."));

    const auto actions = capability->hotkeyActions();
    ASSERT_EQ(actions.size(), 1);
    EXPECT_EQ(actions[0].id, QStringLiteral("plainpaste.paste"));
    EXPECT_EQ(actions[0].title, QStringLiteral("Paste as Plain Text"));
}

TEST_F(PlainPasteCapabilityTest, TheHotKeyWorksFromTheFirstActivationOn)
{
    fake.generalPasteboard.copyString(QStringLiteral("text"));
    const auto handler = capability->hotkeyActions().first().handler;
    handler();
    settle();
    EXPECT_EQ(pastes(), 0);
    capability->activate(context);
    handler();
    settle();
    EXPECT_EQ(pastes(), 1);
    capability->deactivate();
    handler();
    settle();
    EXPECT_EQ(pastes(), 2) << "whether the key is bound isn't the capability's business";
    EXPECT_EQ(context.serviceHost->runningCount(), 0);

    capability->uninstall(context);
    handler();
    capability.reset();
    handler();
    settle();
    EXPECT_EQ(pastes(), 2);
}

TEST_F(PlainPasteCapabilityTest, TheMenuHasAnEntryWhileThereIsAController)
{
    EXPECT_TRUE(capability->menuBarContributions().isEmpty());
    capability->activate(context);
    const auto items = capability->menuBarContributions();
    ASSERT_EQ(items.size(), 1);
    EXPECT_EQ(items[0].id, QStringLiteral("plainpaste.paste"));
    EXPECT_EQ(items[0].title, QStringLiteral("Paste as Plain Text"));
    EXPECT_EQ(items[0].systemImage, QStringLiteral("doc.plaintext"));
    fake.generalPasteboard.copyString(QStringLiteral("text"));
    items[0].action();
    settle();
    EXPECT_EQ(pastes(), 1);

    capability->uninstall(context);
    EXPECT_TRUE(capability->menuBarContributions().isEmpty());
}

TEST_F(PlainPasteCapabilityTest, UninstallRemovesTheSettings)
{
    capability->activate(context);
    fake.defaults.stored[plainPasteID + QStringLiteral(".autoPaste")] = false;
    capability->uninstall(context);
    EXPECT_TRUE(fake.defaults.stored.isEmpty());
}

TEST_F(PlainPasteCapabilityTest, ThePane)
{
    const AnyView pane = capability->makeSettingsPane(context);
    const auto sections = pane.all<OrvaSection>();
    ASSERT_EQ(sections.size(), 1);
    EXPECT_EQ(sections[0]->title, QStringLiteral("Behavior"));
    EXPECT_EQ(sections[0]->systemImage, QStringLiteral("doc.plaintext"));
    const auto toggles = pane.all<OrvaToggleRow>();
    ASSERT_EQ(toggles.size(), 1);
    EXPECT_EQ(toggles[0]->title.get(), QStringLiteral("Paste automatically after stripping formatting"));
    ASSERT_TRUE(toggles[0]->caption);
    EXPECT_EQ(toggles[0]->caption->get(),
              QStringLiteral("Auto-paste needs Accessibility permission. When off, your "
                             "clipboard is cleaned and you press ⌘V yourself."));
    EXPECT_TRUE(toggles[0]->isOn.get());
    const auto callouts = pane.all<OrvaCalloutText>();
    ASSERT_EQ(callouts.size(), 1);
    EXPECT_EQ(callouts[0]->text.get(),
              QStringLiteral("Assign a shortcut above (a common choice is ⇧⌘V) to paste "
                             "clean text anywhere."));
}

TEST_F(PlainPasteCapabilityTest, ThePaneSharesItsSettingsWithTheController)
{
    const AnyView pane = capability->makeSettingsPane(context);
    capability->activate(context);
    pane.all<OrvaToggleRow>().first()->isOn.set(false);
    EXPECT_EQ(fake.defaults.stored.value(plainPasteID + QStringLiteral(".autoPaste")), QVariant(false));
    fake.generalPasteboard.copyString(QStringLiteral("text"));
    capability->hotkeyActions().first().handler();
    settle();
    EXPECT_EQ(pastes(), 0);
}
