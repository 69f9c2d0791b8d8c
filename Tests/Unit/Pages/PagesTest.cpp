// Every page of the window with texts that are half as long again, and mirrored: no text is cut off, and what
// stands at the leading edge stands at the right.
#include "Fakes/FakePlatform.h"
#include "Orvane/Home/HomeView.h"
#include "Orvane/Home/RootView.h"
#include "Orvane/Launch/AppEnvironment.h"
#include "OrvaneCore/Base/Task.h"
#include "OrvaneKit/Controls/OrvaTextView.h"
#include "Unit/Pages/LongTexts.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QScrollArea>

#include <gtest/gtest.h>

namespace orvane::tests {
namespace {

/// The language lasts for the whole process, because the descriptions of features are read once.
class LongTextsEnvironment final : public ::testing::Environment {
public:
    void SetUp() override { QCoreApplication::installTranslator(&m_texts); }

private:
    LongTexts m_texts;
};

[[maybe_unused]] const ::testing::Environment* const longTexts =
    ::testing::AddGlobalTestEnvironment(new LongTextsEnvironment);

std::string described(const QWidget& widget, const QString& text)
{
    const QByteArray name = widget.metaObject()->className();
    return name.toStdString() + " \"" + text.toStdString() + "\"";
}

/// Returns the part of the widget that none of the widgets around it cuts off. A scroll area shows all of it,
/// in turn.
QRect uncutPart(const QWidget& widget)
{
    QRect part = widget.rect();
    const QWidget* inner = &widget;
    for (const QWidget* outer = widget.parentWidget(); outer && !inner->isWindow();
         outer = outer->parentWidget()) {
        const bool scrolls = qobject_cast<const QAbstractScrollArea*>(outer->parentWidget()) != nullptr;
        QRect room = outer->rect();
        if (scrolls)
            room.setBottom(QWIDGETSIZE_MAX), room.setTop(-QWIDGETSIZE_MAX);
        part &= room.translated(-widget.mapTo(outer, QPoint()));
        inner = outer;
    }
    return part;
}

void expectRoomFor(const QWidget& widget, const QString& text, QSize needed)
{
    const QRect part = uncutPart(widget);
    EXPECT_GE(part.width(), needed.width()) << described(widget, text) << " is cut off at its side";
    EXPECT_GE(part.height(), needed.height()) << described(widget, text) << " is cut off at its foot";
}

int expectNoTextCutOff(const QWidget& page)
{
    int count = 0;
    for (const QWidget* widget : page.findChildren<QWidget*>()) {
        if (!widget->isVisible())
            continue;
        if (const auto* text = dynamic_cast<const OrvaTextView*>(widget)) {
            const int narrowest = text->minimumSizeHint().width();
            expectRoomFor(*text, text->text(), {narrowest, text->heightForWidth(text->width())});
            ++count;
        } else if (const auto* button = qobject_cast<const QAbstractButton*>(widget);
                   button && !button->text().isEmpty()) {
            const QSize hint = button->hasHeightForWidth() ? QSize(button->minimumSizeHint().width(),
                                                                   button->heightForWidth(button->width()))
                                                           : button->sizeHint();
            expectRoomFor(*button, button->text(), hint);
            ++count;
        }
    }
    return count;
}

class PagesTest : public ::testing::TestWithParam<Qt::LayoutDirection> {
protected:
    PagesTest()
    {
        QApplication::setLayoutDirection(GetParam());
        environment = AppEnvironment::make();
    }
    ~PagesTest() override { QApplication::setLayoutDirection(Qt::LeftToRight); }

    void show(const AnyView& view, QSize size = RootView::minimumSize)
    {
        page.reset(view.makeWidget());
        page->resize(size);
        page->show();
        fake.runLoop.drain();
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
    [[nodiscard]] HomeView home() const
    {
        return {environment->sharedRegistry(), environment->sharedPermissions(),
                environment->sharedAppPreferences(), navigation};
    }
    [[nodiscard]] QList<std::optional<HomeSelection>> selections() const
    {
        QList<std::optional<HomeSelection>> all{HomeSelection::general()};
        for (const auto& entry : environment->registry().entries())
            all.append(HomeSelection::capability(entry.id()));
        return all;
    }

    FakePlatform fake;
    std::shared_ptr<AppEnvironment> environment;
    std::shared_ptr<HomeNavigation> navigation = std::make_shared<HomeNavigation>();
    std::unique_ptr<QWidget> page;
};

TEST_P(PagesTest, NoPageCutsATextOff)
{
    for (const auto& selection : selections()) {
        const CapabilityID* id = selection->capabilityID();
        SCOPED_TRACE(id ? id->rawValue.toStdString() : "General");
        if (id) {
            startTask(
                [this, id = *id]() -> Task<> { co_await environment->registry().setEnabled(true, id); });
            fake.runLoop.drain();
        }
        navigation->selection.set(selection);
        show(home());
        EXPECT_GT(expectNoTextCutOff(*page), 3);
    }
}

TEST_P(PagesTest, TheFirstRunCutsNoTextOff)
{
    for (int step = 0; step < 3; ++step) {
        SCOPED_TRACE(step);
        show(RootView::make(environment));
        for (int i = 0; i < step; ++i) {
            for (QAbstractButton* button : page->findChildren<QAbstractButton*>()) {
                if (button->isVisible() && button->text().startsWith(QStringLiteral("Continue"))) {
                    button->click();
                    break;
                }
            }
            QCoreApplication::processEvents();
        }
        EXPECT_GT(expectNoTextCutOff(*page), 1);
    }
}

TEST_P(PagesTest, LabelsStandAtTheLeadingEdge)
{
    const bool mirrored = GetParam() == Qt::RightToLeft;
    for (const auto& selection : selections()) {
        navigation->selection.set(selection);
        show(home());
        const QImage picture = page->grab().toImage();
        const auto* area = page->findChild<QScrollArea*>();
        ASSERT_NE(area, nullptr);
        const int middle = area->mapTo(page.get(), area->rect().center()).x();
        for (const auto* text : page->findChildren<OrvaTextView*>()) {
            if (text->isVisible() &&
                text->text().startsWith(LongTexts::lengthened(QStringLiteral("Keyboard Shortcuts")))) {
                const int x = text->mapTo(page.get(), text->rect().center()).x();
                EXPECT_EQ(x > middle, mirrored) << text->text().toStdString();
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Directions, PagesTest, ::testing::Values(Qt::LeftToRight, Qt::RightToLeft),
                         [](const auto& info) {
                             return info.param == Qt::LeftToRight ? "FromLeft" : "FromRight";
                         });

} // namespace
} // namespace orvane::tests
