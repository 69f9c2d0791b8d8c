#include "OrvaneCore/Windows/AX.h"
#include "Fakes/FakePlatform.h"
#include "OrvaneCore/Windows/AXAttr.h"

#include <gtest/gtest.h>

namespace orvane::tests {

namespace {

using namespace std::chrono_literals;

const QString attribute = QStringLiteral("AXSomething");

class AXReads : public testing::Test {
protected:
    void hold(const AXValue& value)
    {
        FakeAccessibility::node(element).attributes.insert_or_assign(attribute, value);
    }

    FakePlatform fake;
    AXUIElement element = FakeAccessibility::makeElement();
};

/// Returns the typed reads that give a result.
QStringList readableAs(const AXUIElement& element)
{
    QStringList kinds;
    const auto note = [&kinds](bool isThere, const char* kind) {
        if (isThere)
            kinds.append(QString::fromLatin1(kind));
    };
    note(AX::copy(element, attribute).has_value(), "any");
    note(AX::string(element, attribute).has_value(), "string");
    note(AX::boolean(element, attribute).has_value(), "bool");
    note(AX::url(element, attribute).has_value(), "url");
    note(AX::element(element, attribute).has_value(), "element");
    note(AX::elements(element, attribute).has_value(), "elements");
    note(AX::point(element, attribute).has_value(), "point");
    note(AX::size(element, attribute).has_value(), "size");
    return kinds;
}

QStringList anyAnd(const char* kind)
{
    return {QStringLiteral("any"), QString::fromLatin1(kind)};
}

} // namespace

TEST_F(AXReads, GiveAValueOfTheirOwnKindAlone)
{
    const AXUIElement other = FakeAccessibility::makeElement();
    const std::vector<std::pair<AXValue, const char*>> table{
        {QStringLiteral("text"), "string"},
        {false, "bool"},
        {QUrl(QStringLiteral("file:///x")), "url"},
        {other, "element"},
        {QList<AXUIElement>{other, element}, "elements"},
        {Point{1, 2}, "point"},
        {Size{3, 4}, "size"},
    };
    for (const auto& [value, kind] : table) {
        hold(value);
        EXPECT_EQ(readableAs(element), anyAnd(kind)) << kind;
    }
}

TEST_F(AXReads, GiveWhatStandsThere)
{
    const AXUIElement other = FakeAccessibility::makeElement();
    hold(QStringLiteral("text"));
    EXPECT_EQ(AX::string(element, attribute), QStringLiteral("text"));
    EXPECT_EQ(AX::copy(element, attribute), AXValue(QStringLiteral("text")));
    hold(false);
    EXPECT_EQ(AX::boolean(element, attribute), false);
    hold(true);
    EXPECT_EQ(AX::boolean(element, attribute), true);
    hold(QUrl(QStringLiteral("file:///x")));
    EXPECT_EQ(AX::url(element, attribute), QUrl(QStringLiteral("file:///x")));
    hold(other);
    EXPECT_EQ(AX::element(element, attribute), other);
    hold(QList<AXUIElement>{other, element});
    EXPECT_EQ(AX::elements(element, attribute), (QList<AXUIElement>{other, element}));
    hold(Point{1.5, -2});
    EXPECT_EQ(AX::point(element, attribute), (Point{1.5, -2}));
    hold(Size{3, 4.25});
    EXPECT_EQ(AX::size(element, attribute), (Size{3, 4.25}));
}

TEST_F(AXReads, GiveNothingForAnAttributeThatIsMissing)
{
    EXPECT_EQ(readableAs(element), QStringList());
}

TEST_F(AXReads, GiveNothingWhenTheStatusIsNotSuccess)
{
    hold(QStringLiteral("text"));
    for (const AXError error : {AXError::invalidUIElement, AXError::cannotComplete, AXError::apiDisabled,
                                AXError::noValue, AXError::failure}) {
        FakeAccessibility::node(element).failure = error;
        EXPECT_EQ(readableAs(element), QStringList()) << static_cast<int>(error);
    }
}

TEST_F(AXReads, TakeOneCallEach)
{
    hold(QStringLiteral("text"));
    AX::string(element, attribute);
    EXPECT_EQ(fake.accessibility.calls.size(), 1u);
    AX::point(element, attribute);
    EXPECT_EQ(fake.accessibility.calls.size(), 2u);
}

TEST_F(AXReads, LogNothing)
{
    AX::string(element, attribute);
    AX::perform(element, AXAttr::raiseAction);
    AX::set(element, attribute, Point{1, 1});
    EXPECT_TRUE(fake.log.entries().empty());
}

TEST(AXFrame, IsPositionThenSize)
{
    FakePlatform fake;
    const AXUIElement window = fake.accessibility.focusNewWindow({10, 20}, {300, 200});
    EXPECT_EQ(AX::frame(window), (Rect{{10, 20}, {300, 200}}));
    ASSERT_EQ(fake.accessibility.calls.size(), 2u);
    EXPECT_EQ(fake.accessibility.calls[0].name, AXAttr::position);
    EXPECT_EQ(fake.accessibility.calls[1].name, AXAttr::size);
}

TEST(AXFrame, IsAbsentWhenOnlyOneOfTheTwoCanBeRead)
{
    FakePlatform fake;
    for (const QString& unreadable : {AXAttr::size, AXAttr::position}) {
        const AXUIElement window = fake.accessibility.focusNewWindow({10, 20}, {300, 200});
        FakeAccessibility::node(window).attributes.erase(unreadable);
        EXPECT_EQ(AX::frame(window), std::nullopt) << unreadable.toStdString();
    }
}

TEST(AXFrame, IsAbsentWhenTheSizeIsOfAnotherKind)
{
    FakePlatform fake;
    const AXUIElement window = fake.accessibility.focusNewWindow({10, 20}, {300, 200});
    FakeAccessibility::node(window).attributes.insert_or_assign(AXAttr::size, Point{300, 200});
    EXPECT_EQ(AX::frame(window), std::nullopt);
}

TEST(AXSet, ChangesTheAttributeAndTellsSuccess)
{
    FakePlatform fake;
    const AXUIElement window = fake.accessibility.focusNewWindow({10, 20}, {300, 200});
    EXPECT_TRUE(AX::set(window, AXAttr::position, Point{1.25, 2}));
    EXPECT_TRUE(AX::set(window, AXAttr::size, Size{3, 4}));
    AX::setBool(window, AXAttr::fullScreen, true);
    EXPECT_EQ(AX::frame(window), (Rect{{1.25, 2}, {3, 4}}));
    EXPECT_EQ(AX::boolean(window, AXAttr::fullScreen), true);
}

TEST(AXSet, TellsARefusal)
{
    FakePlatform fake;
    const AXUIElement window = fake.accessibility.focusNewWindow({10, 20}, {300, 200});
    EXPECT_FALSE(AX::set(window, AXAttr::minimized, Point{1, 2}));
    EXPECT_FALSE(AX::set(window, AXAttr::minimized, Size{1, 2}));
    FakeAccessibility::node(window).failure = AXError::cannotComplete;
    EXPECT_FALSE(AX::set(window, AXAttr::position, Point{1, 2}));
    EXPECT_FALSE(AX::set(window, AXAttr::size, Size{1, 2}));
    AX::setBool(window, AXAttr::fullScreen, true); // there is no element to set it on
    FakeAccessibility::node(window).failure = AXError::success;
    EXPECT_EQ(AX::boolean(window, AXAttr::fullScreen), false);
    EXPECT_EQ(AX::frame(window), (Rect{{10, 20}, {300, 200}}));
}

TEST(AXPerform, DoesTheActionAndTellsSuccess)
{
    FakePlatform fake;
    const AXUIElement button = FakeAccessibility::makeElement();
    int presses = 0;
    FakeAccessibility::node(button).actions.emplace(AXAttr::pressAction, [&presses] { ++presses; });
    EXPECT_TRUE(AX::perform(button, AXAttr::pressAction));
    EXPECT_EQ(presses, 1);
    EXPECT_FALSE(AX::perform(button, AXAttr::raiseAction));
    FakeAccessibility::node(button).failure = AXError::invalidUIElement;
    EXPECT_FALSE(AX::perform(button, AXAttr::pressAction));
    EXPECT_EQ(presses, 1);
}

TEST(AXMessagingTimeout, GoesToTheElement)
{
    FakePlatform fake;
    const AXUIElement element = FakeAccessibility::makeElement();
    AX::setMessagingTimeout(element, 250ms);
    EXPECT_EQ(FakeAccessibility::node(element).timeout, std::chrono::duration<float>(0.25F));
    EXPECT_TRUE(fake.accessibility.calls.empty());
}

TEST(AXAttr, NamesAreTheSystemsOwn)
{
    const std::vector<std::pair<QString, const char*>> table{
        {AXAttr::children, "AXChildren"},
        {AXAttr::role, "AXRole"},
        {AXAttr::listRole, "AXList"},
        {AXAttr::windowRole, "AXWindow"},
        {AXAttr::selectedChildren, "AXSelectedChildren"},
        {AXAttr::selectedChildrenChanged, "AXSelectedChildrenChanged"},
        {AXAttr::url, "AXURL"},
        {AXAttr::title, "AXTitle"},
        {AXAttr::position, "AXPosition"},
        {AXAttr::size, "AXSize"},
        {AXAttr::windows, "AXWindows"},
        {AXAttr::minimized, "AXMinimized"},
        {AXAttr::raiseAction, "AXRaise"},
        {AXAttr::main, "AXMain"},
        {AXAttr::focused, "AXFocused"},
        {AXAttr::focusedWindow, "AXFocusedWindow"},
        {AXAttr::focusedApplication, "AXFocusedApplication"},
        {AXAttr::fullScreen, "AXFullScreen"},
        {AXAttr::parent, "AXParent"},
        {AXAttr::closeButton, "AXCloseButton"},
        {AXAttr::zoomButton, "AXZoomButton"},
        {AXAttr::pressAction, "AXPress"},
    };
    for (const auto& [name, text] : table)
        EXPECT_EQ(name, QString::fromLatin1(text));
}

} // namespace orvane::tests
