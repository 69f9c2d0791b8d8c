#include "Contract/AccessibilityFixture.h"
#include "Fakes/FakeAccessibility.h"

#include <functional>
#include <memory>

namespace orvane::tests {

namespace {

constexpr auto deadline = 15s;

/// A desktop with other programs.
class Stage {
public:
    virtual ~Stage() = default;
    virtual Accessibility& accessibility() = 0;
    /// Shows a window of a program that wasn't there before; it gets the focus.
    virtual void showWindow() = 0;
    /// Returns the frame that a person sees.
    [[nodiscard]] virtual QRectF frame() const = 0;
    virtual void endProgram() = 0;
    virtual void takeAwayPermission() = 0;
};

class FakeStage : public Stage {
public:
    Accessibility& accessibility() override { return m_accessibility; }
    void showWindow() override
    {
        m_window = m_accessibility.focusNewWindow({200, 150}, {480, 320});
        m_accessibility.node(*m_window).actions.emplace(u"AXRaise"_qs, [] {});
    }
    [[nodiscard]] QRectF frame() const override
    {
        const auto& attributes = FakeAccessibility::node(*m_window).attributes;
        const Point position = std::get<Point>(attributes.at(u"AXPosition"_qs));
        const Size size = std::get<Size>(attributes.at(u"AXSize"_qs));
        return {position.x, position.y, size.width, size.height};
    }
    void endProgram() override { FakeAccessibility::node(*m_window).failure = AXError::invalidUIElement; }
    void takeAwayPermission() override
    {
        FakeAccessibility::node(m_accessibility.systemWide).failure = AXError::apiDisabled;
        FakeAccessibility::node(*m_window).failure = AXError::apiDisabled;
    }

private:
    FakeAccessibility m_accessibility;
    std::optional<AXUIElement> m_window;
};

class LinuxStage : public Stage {
public:
    LinuxStage() { m_permissions.accessibility = true; }
    Accessibility& accessibility() override { return m_accessibility; }
    void showWindow() override
    {
        const QString title = u"Window %1"_qs.arg(m_foreign.size());
        m_foreign.push_back(std::make_unique<ForeignWindow>(m_windows, WindowKind::qt, title));
    }
    [[nodiscard]] QRectF frame() const override { return m_foreign.back()->frame(); }
    void endProgram() override
    {
        const WindowId window = m_foreign.back()->id;
        m_foreign.pop_back();
        EXPECT_TRUE(eventually(deadline, [&] { return m_windows.geometry(window).isEmpty(); }));
    }
    void takeAwayPermission() override { m_permissions.accessibility = false; }

private:
    Windows m_windows;
    std::vector<std::unique_ptr<ForeignWindow>> m_foreign;
    NotificationCenter m_center;
    X11Screens m_screens{m_center};
    FakePermissions m_permissions;
    X11Accessibility m_accessibility{m_screens, m_permissions};
};

struct Implementation {
    const char* name;
    std::unique_ptr<Stage> (*make)();
};

} // namespace

class AccessibilityContract : public ::testing::TestWithParam<Implementation> {
protected:
    template <typename Kind>
    std::optional<Kind> read(const AXUIElement& element, const char* attribute)
    {
        return readAX<Kind>(accessibility(), element, attribute);
    }

    Accessibility& accessibility() { return m_stage->accessibility(); }

    /// Returns the focused window. It is waited for: while the window manager takes the focus from a program
    /// that has just ended, there is none.
    std::optional<AXUIElement> focusedWindow()
    {
        std::optional<AXUIElement> window;
        EXPECT_TRUE(eventually(deadline, [&] {
            const auto application =
                read<AXUIElement>(accessibility().createSystemWide(), "AXFocusedApplication");
            window = application ? read<AXUIElement>(*application, "AXFocusedWindow") : std::nullopt;
            return window.has_value();
        }));
        return window;
    }

    AXError set(const AXUIElement& element, const char* attribute, const AXValue& value)
    {
        return accessibility().setAttributeValue(element, QString::fromLatin1(attribute), value);
    }

    std::unique_ptr<Stage> m_stage = GetParam().make();
};

INSTANTIATE_TEST_SUITE_P(
    Platforms, AccessibilityContract,
    ::testing::Values(
        Implementation{"Fake", []() -> std::unique_ptr<Stage> { return std::make_unique<FakeStage>(); }},
        Implementation{"Linux", []() -> std::unique_ptr<Stage> { return std::make_unique<LinuxStage>(); }}),
    [](const auto& test) { return std::string(test.param.name); });

TEST_P(AccessibilityContract, TheFocusedWindowIsFoundFromTheTop)
{
    m_stage->showWindow();
    const auto window = focusedWindow();
    ASSERT_TRUE(window);
    const QRectF frame = m_stage->frame();
    EXPECT_EQ(read<Point>(*window, "AXPosition"), (Point{frame.x(), frame.y()}));
    EXPECT_EQ(read<Size>(*window, "AXSize"), (Size{frame.width(), frame.height()}));
    EXPECT_EQ(read<bool>(*window, "AXFullScreen"), false);
}

TEST_P(AccessibilityContract, TwoHandlesOnOneWindowAreEqualAndThoseOnTwoAreNot)
{
    m_stage->showWindow();
    const auto first = focusedWindow();
    EXPECT_EQ(focusedWindow(), first);
    m_stage->showWindow();
    EXPECT_NE(focusedWindow(), first);
}

TEST_P(AccessibilityContract, WhatIsSetComesAbout)
{
    m_stage->showWindow();
    const auto window = focusedWindow();
    ASSERT_TRUE(window);
    EXPECT_EQ(set(*window, "AXPosition", Point{300, 250}), AXError::success);
    EXPECT_EQ(set(*window, "AXSize", Size{640, 400}), AXError::success);
    EXPECT_TRUE(eventually(deadline, [&] { return m_stage->frame() == QRectF(300, 250, 640, 400); }));
    EXPECT_EQ(read<Point>(*window, "AXPosition"), (Point{300, 250}));
    EXPECT_EQ(read<Size>(*window, "AXSize"), (Size{640, 400}));
}

TEST_P(AccessibilityContract, AValueOfAnotherKindIsRefusedAndChangesNothing)
{
    m_stage->showWindow();
    const auto window = focusedWindow();
    ASSERT_TRUE(window);
    const QRectF before = m_stage->frame();
    EXPECT_EQ(set(*window, "AXPosition", Size{1, 1}), AXError::illegalArgument);
    EXPECT_EQ(set(*window, "AXSize", true), AXError::illegalArgument);
    EXPECT_EQ(set(*window, "AXFullScreen", Point{1, 1}), AXError::illegalArgument);
    EXPECT_EQ(m_stage->frame(), before);
}

TEST_P(AccessibilityContract, WhatAnElementDoesNotHaveIsToldApart)
{
    m_stage->showWindow();
    const auto window = focusedWindow();
    ASSERT_TRUE(window);
    EXPECT_EQ(accessibility().copyAttributeValue(*window, u"AXURL"_qs).error, AXError::attributeUnsupported);
    EXPECT_EQ(set(*window, "AXNothing", true), AXError::attributeUnsupported);
    EXPECT_EQ(accessibility().performAction(*window, u"AXPress"_qs), AXError::actionUnsupported);
    EXPECT_EQ(accessibility().performAction(*window, u"AXRaise"_qs), AXError::success);
}

TEST_P(AccessibilityContract, AWindowThatIsGoneIsInvalid)
{
    m_stage->showWindow();
    const auto window = focusedWindow();
    ASSERT_TRUE(window);
    m_stage->endProgram();
    for (const char* attribute : {"AXPosition", "AXSize", "AXFullScreen"})
        EXPECT_EQ(accessibility().copyAttributeValue(*window, QString::fromLatin1(attribute)).error,
                  AXError::invalidUIElement)
            << attribute;
    EXPECT_EQ(set(*window, "AXPosition", Point{1, 1}), AXError::invalidUIElement);
    EXPECT_EQ(set(*window, "AXSize", Size{1, 1}), AXError::invalidUIElement);
    EXPECT_EQ(set(*window, "AXFullScreen", true), AXError::invalidUIElement);
    EXPECT_EQ(accessibility().performAction(*window, u"AXRaise"_qs), AXError::invalidUIElement);
}

TEST_P(AccessibilityContract, WithoutThePermissionNothingIsTold)
{
    m_stage->showWindow();
    const auto window = focusedWindow();
    ASSERT_TRUE(window);
    m_stage->takeAwayPermission();
    const AXUIElement systemWide = accessibility().createSystemWide();
    EXPECT_EQ(accessibility().copyAttributeValue(systemWide, u"AXFocusedApplication"_qs).error,
              AXError::apiDisabled);
    EXPECT_EQ(accessibility().copyAttributeValue(*window, u"AXPosition"_qs).error, AXError::apiDisabled);
    EXPECT_EQ(set(*window, "AXPosition", Point{1, 1}), AXError::apiDisabled);
    EXPECT_EQ(accessibility().performAction(*window, u"AXRaise"_qs), AXError::apiDisabled);
}

} // namespace orvane::tests
