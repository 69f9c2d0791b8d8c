// Every page of the window, from left to right and mirrored: no text is cut off, and letters stand at the
// leading edge. The texts are half as long again as this desktop's, or in the language that PAGES_IN names.
#include "Capabilities/SnapZones/Layouts/SnapLayoutCellView.h"
#include "Capabilities/SnapZones/Layouts/SnapLayoutGridView.h"
#include "Fakes/FakePlatform.h"
#include "Orvane/Brand/ShellText.h"
#include "Orvane/Home/HomeView.h"
#include "Orvane/Home/RootView.h"
#include "Orvane/Launch/AppEnvironment.h"
#include "OrvaneCore/Base/Task.h"
#include "OrvaneKit/Controls/OrvaTextView.h"
#include "PlatformLinux/Language/Catalogues.h"
#include "Unit/Pages/LongTexts.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QApplication>
#include <QImage>

#include <optional>

#include <gtest/gtest.h>

namespace orvane::tests {
namespace {

/// The language lasts for the whole process, because the descriptions of features are read once.
class LanguageEnvironment final : public ::testing::Environment {
public:
    void SetUp() override
    {
        const QString language = qEnvironmentVariable("PAGES_IN");
        if (!language.isEmpty()) {
            m_catalogues.emplace(QLocale(language));
        } else {
            m_longTexts.emplace();
            QCoreApplication::installTranslator(&*m_longTexts);
        }
    }
    void TearDown() override
    {
        m_longTexts.reset();
        m_catalogues.reset();
    }

private:
    std::optional<LongTexts> m_longTexts;
    std::optional<Catalogues> m_catalogues;
};

[[maybe_unused]] const ::testing::Environment* const language =
    ::testing::AddGlobalTestEnvironment(new LanguageEnvironment);

std::string described(const QWidget& widget, const QString& text)
{
    const QByteArray name = widget.metaObject()->className();
    return name.toStdString() + " \"" + text.toStdString() + "\"";
}

/// Returns the part of the widget that none of the widgets around it cuts off; what can be scrolled to is
/// whole.
QRect uncutPart(const QWidget& widget)
{
    QRect part = widget.rect();
    for (const QWidget* outer = widget.parentWidget(); outer; outer = outer->parentWidget()) {
        const QRect room = outer->rect().translated(-widget.mapTo(outer, QPoint()));
        const bool scrolls = qobject_cast<const QAbstractScrollArea*>(outer->parentWidget()) != nullptr;
        if (scrolls)
            return part & QRect(room.left(), part.top(), room.width(), part.height());
        part &= room;
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

/// Returns the smallest rectangle around what the widget paints.
QRect inkOf(QWidget& widget)
{
    QImage picture(widget.size(), QImage::Format_ARGB32);
    picture.fill(Qt::transparent);
    widget.render(&picture, QPoint(), QRegion(), QWidget::RenderFlags());
    QRect ink;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (qAlpha(picture.pixel(x, y)) > 0)
                ink |= QRect(x, y, 1, 1);
        }
    }
    return ink;
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
                if (button->isVisible() && button->text() == ShellText::tr("Continue")) {
                    button->click();
                    break;
                }
            }
            QCoreApplication::processEvents();
        }
        EXPECT_GT(expectNoTextCutOff(*page), 1);
    }
}

TEST_P(PagesTest, LettersStandAtTheLeadingEdgeOfTheirLabel)
{
    int count = 0;
    for (const auto& selection : selections()) {
        navigation->selection.set(selection);
        show(home());
        for (auto* child : page->findChildren<QWidget*>()) {
            auto* label = dynamic_cast<OrvaTextView*>(child);
            if (!label)
                continue;
            const int spare = label->width() - label->sizeHint().width();
            constexpr int tellingRoom = 24; // points
            if (!label->isVisible() || spare < tellingRoom || !label->alignment().testFlag(Qt::AlignLeft))
                continue;
            const QRect ink = inkOf(*label);
            const int before = ink.left();
            const int after = label->width() - 1 - ink.right();
            EXPECT_EQ(before < after, GetParam() == Qt::LeftToRight) << described(*label, label->text());
            ++count;
        }
    }
    EXPECT_GT(count, 10);
}

TEST_P(PagesTest, TheLayoutPanelHasRoomForItsTitles)
{
    show(SnapLayoutGridView{.model = std::make_shared<SnapLayoutModel>()}, {});
    page->adjustSize();
    int count = 0;
    for (const auto* cell : page->findChildren<SnapLayoutCellView*>()) {
        const int text = cell->fontMetrics().horizontalAdvance(cell->text());
        EXPECT_LE(text, cell->width() - 2 * orvaRingMargin) << described(*cell, cell->text());
        EXPECT_TRUE(page->rect().contains(cell->geometry())) << described(*cell, cell->text());
        ++count;
    }
    EXPECT_EQ(count, 9);
}

INSTANTIATE_TEST_SUITE_P(Directions, PagesTest, ::testing::Values(Qt::LeftToRight, Qt::RightToLeft),
                         [](const auto& direction) {
                             return direction.param == Qt::LeftToRight ? "FromLeft" : "FromRight";
                         });

} // namespace
} // namespace orvane::tests
