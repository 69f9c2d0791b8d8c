// The chooser of programs, as a person uses it.
#include "OrvaneKit/AppChooser/OrvaAppChooser.h"
#include "Fakes/FakePlatform.h"
#include "OrvaneKit/AppChooser/OrvaAppChooserPanel.h"
#include "OrvaneKit/AppChooser/OrvaAppListView.h"
#include "Unit/OrvaneKit/OrvaWidgetSupport.h"

#include <QAccessible>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>

#include <gtest/gtest.h>

namespace {

using namespace orvane;
using namespace orvane::tests;

InstalledApplication program(const char* name, const char* identifier)
{
    return {identifier ? std::optional(QString::fromUtf8(identifier)) : std::nullopt, QString::fromUtf8(name),
            QStringLiteral("no-such-icon")};
}

class OrvaAppChooserTest : public testing::Test {
protected:
    FakePlatform fake;
    QWidget window;
    QStringList accepted;
    QStringList present;
    QPointer<OrvaAppChooserPanel> panel;

    OrvaAppChooserTest()
    {
        fake.workspace.installed = {
            program("terminal", "org.kde.konsole"),    program("Writer", "org.example.Writer"),
            program("Browser", "org.example.Browser"), program("Anonymous", nullptr),
            program("Files", "com.apple.finder"),      program("Terminal", "net.kovidgoyal.kitty")};
        window.resize(600, 600);
        showActive(window);
    }
    ~OrvaAppChooserTest() override { delete panel; }

    void run()
    {
        OrvaAppChooser::run([this](const QString& identifier) { accepted.append(identifier); }, present);
        for (QWidget* top : QApplication::topLevelWidgets()) {
            if (auto* found = dynamic_cast<OrvaAppChooserPanel*>(top); found && found->isVisible())
                panel = found;
        }
        ASSERT_TRUE(panel);
        waitUntil([this] { return panel->isActiveWindow(); });
    }

    QLineEdit& field() { return *panel->findChild<QLineEdit*>(); }
    OrvaAppListView& list() { return *all<OrvaAppListView>(*panel).first(); }
    QPushButton& button(const char16_t* name)
    {
        for (QPushButton* each : panel->findChildren<QPushButton*>()) {
            if (each->accessibleName() == QString::fromUtf16(name))
                return *each;
        }
        throw std::runtime_error("no such button");
    }
    void type(const char* text)
    {
        for (const char* letter = text; *letter; ++letter)
            press(field(), Qt::Key_unknown, QString(QLatin1Char(*letter)));
    }
    QStringList names()
    {
        QStringList found;
        for (int row = 0; row < list().model()->rowCount(); ++row)
            found.append(list().model()->index(row, 0).data().toString());
        return found;
    }
    QString chosen()
    {
        const auto program = list().chosen();
        return program ? program->localizedName : QString();
    }
};

TEST_F(OrvaAppChooserTest, ListsTheInstalledProgramsByNameWhateverTheirCase)
{
    run();
    EXPECT_EQ(names(), QStringLiteral("Anonymous,Browser,Files,terminal,Terminal,Writer").split(u','));
    EXPECT_EQ(panel->windowTitle(), QStringLiteral("Choose an Application"));
    EXPECT_EQ(panel->size(), QSize(420, 520));
}

TEST_F(OrvaAppChooserTest, BlocksItsWindowAloneAndReturnsAtOnce)
{
    run();
    EXPECT_EQ(panel->windowModality(), Qt::WindowModal);
    EXPECT_EQ(panel->parentWidget(), &window);
    EXPECT_TRUE(accepted.isEmpty());
}

TEST_F(OrvaAppChooserTest, NothingIsChosenAtFirstAndAddIsOff)
{
    run();
    EXPECT_EQ(chosen(), QString());
    EXPECT_FALSE(button(u"Add").isEnabled());
    EXPECT_TRUE(field().hasFocus());
    press(field(), Qt::Key_Return);
    EXPECT_TRUE(panel->isVisible());
    EXPECT_TRUE(accepted.isEmpty());
}

TEST_F(OrvaAppChooserTest, TypingNarrowsTheListAndChoosesTheFirst)
{
    run();
    type("ER");
    EXPECT_EQ(names(), QStringLiteral("Browser,Files,terminal,Terminal,Writer").split(u','))
        << "Files by its identifier";
    EXPECT_EQ(chosen(), QStringLiteral("Browser"));
    type(" kit");
    EXPECT_EQ(names(), QStringList{QStringLiteral("Terminal")});
    EXPECT_TRUE(button(u"Add").isEnabled());
    press(field(), Qt::Key_Return);
    EXPECT_EQ(accepted, QStringList{QStringLiteral("net.kovidgoyal.kitty")});
}

TEST_F(OrvaAppChooserTest, AnEmptiedFieldShowsAllAgainAndKeepsTheChoice)
{
    run();
    type("wri");
    field().clear();
    EXPECT_EQ(names().size(), 6);
    EXPECT_EQ(chosen(), QStringLiteral("Writer"));
    EXPECT_TRUE(button(u"Add").isEnabled());
}

TEST_F(OrvaAppChooserTest, TheArrowsWorkFromTheFieldAndPassWhatCanNotBeChosen)
{
    run();
    press(field(), Qt::Key_Down);
    EXPECT_EQ(chosen(), QStringLiteral("Browser")) << "past the one without identifier";
    press(field(), Qt::Key_Down);
    EXPECT_EQ(chosen(), QStringLiteral("Files"));
    press(field(), Qt::Key_Up);
    press(field(), Qt::Key_Up);
    EXPECT_EQ(chosen(), QStringLiteral("Browser")) << "and stop at the end";
    press(field(), Qt::Key_PageDown);
    EXPECT_EQ(chosen(), QStringLiteral("Writer"));
    EXPECT_TRUE(field().hasFocus());
    press(field(), Qt::Key_Enter);
    EXPECT_EQ(accepted, QStringList{QStringLiteral("org.example.Writer")});
    EXPECT_TRUE(waitUntil([&] { return !panel; })) << "it is over when it is closed";
}

TEST_F(OrvaAppChooserTest, EscapeDismissesIt)
{
    run();
    type("wri");
    press(field(), Qt::Key_Escape);
    EXPECT_TRUE(waitUntil([&] { return !panel; }));
    EXPECT_TRUE(accepted.isEmpty());
}

TEST_F(OrvaAppChooserTest, CancelDismissesItByMouseAndByReturn)
{
    run();
    press(field(), Qt::Key_Down);
    click(button(u"Cancel"));
    EXPECT_TRUE(waitUntil([&] { return !panel; }));
    run();
    press(field(), Qt::Key_Down);
    button(u"Cancel").setFocus(Qt::TabFocusReason);
    press(button(u"Cancel"), Qt::Key_Return);
    EXPECT_TRUE(waitUntil([&] { return !panel; }));
    EXPECT_TRUE(accepted.isEmpty());
}

TEST_F(OrvaAppChooserTest, AddAcceptsOnce)
{
    run();
    press(field(), Qt::Key_Down);
    click(button(u"Add"));
    if (panel)
        panel->accept();
    EXPECT_EQ(accepted, QStringList{QStringLiteral("org.example.Browser")});
}

TEST_F(OrvaAppChooserTest, ADoubleClickAcceptsWhatItIsOn)
{
    run();
    const auto doubleClick = [this](int row) {
        const QPointF at = list().visualRect(list().model()->index(row, 0)).center();
        mouse(*list().viewport(), QEvent::MouseButtonPress, at);
        mouse(*list().viewport(), QEvent::MouseButtonRelease, at);
        mouse(*list().viewport(), QEvent::MouseButtonDblClick, at);
    };
    doubleClick(0);
    EXPECT_TRUE(panel->isVisible()) << "it has no identifier";
    EXPECT_TRUE(accepted.isEmpty());
    doubleClick(2);
    EXPECT_EQ(accepted, QStringList{QStringLiteral("com.apple.finder")});
}

TEST_F(OrvaAppChooserTest, AProgramWithoutIdentifierIsDisabledAndDrawnFainter)
{
    run();
    const QModelIndex anonymous = list().model()->index(0, 0);
    EXPECT_FALSE(anonymous.flags() & Qt::ItemIsEnabled);
    const auto darkest = [this](int row) {
        const QRect area = list().visualRect(list().model()->index(row, 0));
        const QImage picture = list().viewport()->grab(area).toImage();
        int least = 255;
        for (int x = 0; x < picture.width(); ++x)
            for (int y = 0; y < picture.height(); ++y)
                least = std::min(least, picture.pixelColor(x, y).lightness());
        return least;
    };
    EXPECT_GT(darkest(0), darkest(1) + 40);
    type("anon");
    EXPECT_EQ(chosen(), QString());
    EXPECT_FALSE(button(u"Add").isEnabled());
}

TEST_F(OrvaAppChooserTest, ProgramsOfOneNameAreToldApartByTheirIdentifier)
{
    fake.workspace.installed.append(program("Terminal", "com.apple.Terminal"));
    run();
    const auto detail = [this](int row) {
        return list().model()->index(row, 0).data(OrvaAppListModel::detailRole).toString();
    };
    EXPECT_EQ(names().mid(4, 2), (QStringList{QStringLiteral("Terminal"), QStringLiteral("Terminal")}));
    EXPECT_EQ(detail(4), QStringLiteral("net.kovidgoyal.kitty"));
    EXPECT_EQ(detail(5), QStringLiteral("com.apple.Terminal"));
    EXPECT_EQ(detail(1), QString());
}

TEST_F(OrvaAppChooserTest, AProgramThatWasChosenBeforeSaysSoAndIsPassedOver)
{
    present = {QStringLiteral("org.example.Browser"), QStringLiteral("not.installed")};
    run();
    const QModelIndex browser = list().model()->index(1, 0);
    EXPECT_EQ(browser.data().toString(), QStringLiteral("Browser"));
    EXPECT_EQ(browser.data(OrvaAppListModel::detailRole).toString(), QStringLiteral("Added"));
    EXPECT_EQ(browser.data(Qt::AccessibleDescriptionRole).toString(),
              QStringLiteral("Browser is on the list already."));
    EXPECT_FALSE(browser.flags() & Qt::ItemIsSelectable);
    press(field(), Qt::Key_Down);
    EXPECT_EQ(chosen(), QStringLiteral("Files"));
    type("brow");
    EXPECT_FALSE(button(u"Add").isEnabled());
    press(field(), Qt::Key_Return);
    EXPECT_TRUE(panel->isVisible());
    EXPECT_TRUE(accepted.isEmpty());
}

TEST_F(OrvaAppChooserTest, SaysSoWhenNothingMatches)
{
    run();
    EXPECT_EQ(shownTexts(*panel), QStringList()) << "the list is in its place";
    type("zzz");
    EXPECT_EQ(shownTexts(*panel), QStringList{QStringLiteral("No application matches “zzz”.")});
    EXPECT_FALSE(list().isVisible());
    EXPECT_FALSE(button(u"Add").isEnabled());
    field().clear();
    EXPECT_TRUE(list().isVisible());
}

TEST_F(OrvaAppChooserTest, SaysSoWhenThereAreNoPrograms)
{
    fake.workspace.installed.clear();
    run();
    EXPECT_EQ(shownTexts(*panel), QStringList{QStringLiteral("No applications were found.")});
    press(field(), Qt::Key_Down);
    press(field(), Qt::Key_Return);
    EXPECT_TRUE(panel->isVisible());
}

TEST_F(OrvaAppChooserTest, ASecondCallBringsTheSameOneToTheFront)
{
    run();
    const QPointer<OrvaAppChooserPanel> first = panel;
    window.activateWindow();
    OrvaAppChooser::run([](const QString&) { FAIL() << "the first caller is answered"; });
    int panels = 0;
    for (QWidget* top : QApplication::topLevelWidgets())
        panels += dynamic_cast<OrvaAppChooserPanel*>(top) ? 1 : 0;
    EXPECT_EQ(panels, 1);
    EXPECT_TRUE(waitUntil([&] { return first->isActiveWindow(); }));
    press(field(), Qt::Key_Down);
    press(field(), Qt::Key_Return);
    EXPECT_EQ(accepted.size(), 1);
}

TEST_F(OrvaAppChooserTest, TabGoesFromTheFieldToTheListAndTheButtons)
{
    run();
    QStringList stops;
    for (int step = 0; step < 4; ++step) {
        stops.append(QApplication::focusWidget()->accessibleName());
        press(*QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(stops, QStringLiteral("Search applications,Applications,Cancel,Add").split(u','))
        << "the list has chosen its first, so Add is on";
    EXPECT_TRUE(field().hasFocus());
}

TEST_F(OrvaAppChooserTest, AcceptsFromTheListByReturnOnce)
{
    run();
    list().setFocus(Qt::TabFocusReason);
    press(list(), Qt::Key_Down);
    press(list(), Qt::Key_Return);
    EXPECT_EQ(accepted, QStringList{QStringLiteral("com.apple.finder")});
}

TEST_F(OrvaAppChooserTest, TellsItsPartsToAssistiveTechnology)
{
    run();
    const auto* dialog = QAccessible::queryAccessibleInterface(panel.data());
    EXPECT_EQ(dialog->role(), QAccessible::Dialog);
    EXPECT_EQ(dialog->text(QAccessible::Name), QStringLiteral("Choose an Application"));
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&field())->text(QAccessible::Name),
              QStringLiteral("Search applications"));
    auto* programs = QAccessible::queryAccessibleInterface(&list());
    EXPECT_EQ(programs->role(), QAccessible::List);
    EXPECT_EQ(programs->text(QAccessible::Name), QStringLiteral("Applications"));
    ASSERT_EQ(programs->childCount(), 6);
    EXPECT_EQ(programs->child(1)->text(QAccessible::Name), QStringLiteral("Browser"));
    EXPECT_FALSE(programs->child(0)->state().selectable);
    EXPECT_TRUE(programs->child(1)->state().selectable);
    EXPECT_EQ(programs->child(0)->text(QAccessible::Description),
              QStringLiteral("This application has no identifier, so it can't be chosen."));
    EXPECT_EQ(programs->child(1)->text(QAccessible::Description), QString()) << "an identifier tells nothing";
}

TEST_F(OrvaAppChooserTest, AClickOnTheCrossEmptiesTheField)
{
    run();
    type("zzz");
    clickAt(field(), QPointF(field().width() - 20, field().height() / 2.0));
    EXPECT_EQ(field().text(), QString());
    EXPECT_EQ(names().size(), 6);
}

TEST_F(OrvaAppChooserTest, EndsWithItsWindowWithoutAnswering)
{
    auto parent = std::make_unique<QWidget>();
    showActive(*parent);
    run();
    EXPECT_EQ(panel->parentWidget(), parent.get());
    press(field(), Qt::Key_Down);
    parent.reset();
    EXPECT_FALSE(panel);
    EXPECT_TRUE(accepted.isEmpty());
}

} // namespace
