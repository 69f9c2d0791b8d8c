#include "OrvaneKit/Controls/OrvaRadioView.h"

#include "OrvaneKit/Lists/OrvaStackView.h"
#include "OrvaneKit/Theme/OrvaAccessible.h"

#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

constexpr int ring = orvaRingMargin;
constexpr double side = 16;
constexpr double dot = 6;
constexpr int textGap = 8;
constexpr int textStart = ring + static_cast<int>(side) + textGap;
constexpr int narrowest = 120;
constexpr int optionGap = 5;
constexpr int paragraph = Qt::TextWordWrap | Qt::AlignTop;

/// The stock interface takes a button that leaves exclusion to its group for a check box.
class AccessibleRadio final : public QAccessibleWidget {
public:
    explicit AccessibleRadio(OrvaRadioView* radio) : QAccessibleWidget(radio, QAccessible::RadioButton) {}

    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.checkable = true;
        state.checked = radio().isChecked();
        state.pressed = radio().isDown();
        return state;
    }

    [[nodiscard]] QStringList actionNames() const override
    {
        return QStringList{pressAction()} + QAccessibleWidget::actionNames();
    }

    void doAction(const QString& action) override
    {
        if (action != pressAction())
            QAccessibleWidget::doAction(action);
        else if (radio().isEnabled())
            radio().click();
    }

private:
    [[nodiscard]] OrvaRadioView& radio() const { return static_cast<OrvaRadioView&>(*widget()); }
};

/// Assistive technology would take a plain widget for a pane without a name.
class AccessibleGroup final : public QAccessibleWidget {
public:
    explicit AccessibleGroup(OrvaRadioGroupView* group) : QAccessibleWidget(group, QAccessible::Grouping) {}
};

} // namespace

OrvaRadioView::OrvaRadioView(QString title, std::function<void(Wish)> wished)
    : m_title(std::move(title)), m_wished(std::move(wished))
{
    // Qt's own exclusion can neither show that nothing is chosen nor let a refused choice go back.
    setAutoExclusive(false);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setAccessibleName(m_title);
    themeChanged();
}

void OrvaRadioView::themeChanged()
{
    setFont(orvaFont(OrvaFont::body));
    updateGeometry();
}

void OrvaRadioView::nextCheckState()
{
    const auto wished = m_wished;
    wished(Wish::chosen);
}

void OrvaRadioView::keyPressEvent(QKeyEvent* event)
{
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    const auto wished = m_wished;
    switch (event->key()) {
    case Qt::Key_Up:
        return wished(Wish::before);
    case Qt::Key_Down:
        return wished(Wish::after);
    case Qt::Key_Left:
        return wished(mirrored ? Wish::after : Wish::before);
    case Qt::Key_Right:
        return wished(mirrored ? Wish::before : Wish::after);
    default:
        return OrvaControl::keyPressEvent(event);
    }
}

int OrvaRadioView::textHeight(int width) const
{
    const QRect room(0, 0, std::max(1, width - textStart - ring), QWIDGETSIZE_MAX);
    return std::max(fontMetrics().boundingRect(room, paragraph, m_title).height(), static_cast<int>(side));
}

QSize OrvaRadioView::sizeHint() const
{
    const int width = textStart + fontMetrics().horizontalAdvance(m_title) + 2 + ring;
    return QSize(width, heightForWidth(width));
}

QSize OrvaRadioView::minimumSizeHint() const
{
    return QSize(std::min(sizeHint().width(), narrowest), heightForWidth(QWIDGETSIZE_MAX));
}

int OrvaRadioView::heightForWidth(int width) const
{
    return textHeight(width) + 2 * ring;
}

void OrvaRadioView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(ownOpacity());

    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    QRect text = rect().adjusted(textStart, 0, -ring, 0);
    QRectF circle(ring, 0, side, side);
    if (mirrored) {
        text = rect().adjusted(ring, 0, -textStart, 0);
        circle.moveRight(width() - ring);
    }
    const int used = textHeight(width());
    text.setTop((height() - used) / 2);
    text.setHeight(used);
    // The circle is in the middle of the first line's capitals, on whole pixels.
    const QFontMetricsF metrics(font());
    const double top = text.top() + metrics.ascent() - metrics.capHeight() / 2 - side / 2;
    circle.moveTop(std::round(top * devicePixelRatioF()) / devicePixelRatioF());

    paintMark(painter, circle);
    painter.setPen(orvaColor(OrvaColor::primary));
    painter.drawText(text, paragraph | QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft), m_title);
    if (showsFocusRing())
        paintOrvaFocusRing(painter, circle, side / 2);
}

void OrvaRadioView::paintMark(QPainter& painter, const QRectF& circle) const
{
    if (isChecked()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(orvaColor(OrvaColor::accent));
        painter.drawEllipse(circle);
        painter.setBrush(orvaColor(OrvaColor::onAccent));
        painter.drawEllipse(circle.center(), dot / 2, dot / 2);
    } else {
        painter.setPen(QPen(orvaColor(OrvaColor::controlTrack), 1));
        painter.setBrush(orvaColor(OrvaColor::controlFill));
        painter.drawEllipse(circle.adjusted(0.5, 0.5, -0.5, -0.5));
    }
    if (isDown()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(0, 0, 0, 28));
        painter.drawEllipse(circle);
    }
}

OrvaRadioGroupView::OrvaRadioGroupView(const OrvaRadioGroup& group)
    : m_selection(group.selection), m_lines(new QVBoxLayout(this))
{
    describeWith<OrvaRadioView, AccessibleRadio>();
    describeWith<OrvaRadioGroupView, AccessibleGroup>();
    constexpr int h = static_cast<int>(Orva::rowH) - ring;
    constexpr int v = static_cast<int>(Orva::rowV) - ring;
    m_lines->setContentsMargins(h, v, h, v);
    m_lines->setSpacing(optionGap);
    setAccessibleName(group.label);
    m_selection.follow(*this, [this](const QString&) { showSelection(); });
    follow(m_cancellables, group.content,
           [this](const QList<OrvaPickerOption>& options) { showOptions(options); });
}

void OrvaRadioGroupView::showOptions(const QList<OrvaPickerOption>& options)
{
    if (options != m_options) {
        const bool focused = isAncestorOf(focusWidget()) && focusWidget()->hasFocus();
        // One of the buttons may have caused the new options.
        for (OrvaRadioView* button : std::exchange(m_buttons, {})) {
            m_lines->removeWidget(button);
            button->setFocusPolicy(Qt::NoFocus);
            button->hide();
            button->deleteLater();
        }
        m_options = options;
        for (const OrvaPickerOption& option : options)
            addButton(option);
        showSelection();
        if (focused && !m_buttons.isEmpty())
            m_buttons.at(std::max(0, chosenIndex()))->setFocus();
    }
    setLeftOut(*this, m_options.isEmpty());
}

void OrvaRadioGroupView::addButton(const OrvaPickerOption& option)
{
    const int index = static_cast<int>(m_buttons.size());
    auto* button = new OrvaRadioView(option.title, [this, index](OrvaRadioView::Wish wish) {
        switch (wish) {
        case OrvaRadioView::Wish::chosen:
            choose(index);
            return;
        case OrvaRadioView::Wish::before:
            return choosePast(index, -1);
        case OrvaRadioView::Wish::after:
            return choosePast(index, +1);
        }
    });
    m_buttons.append(button);
    m_lines->addWidget(button);
    setLeftOut(*button, false);
}

int OrvaRadioGroupView::chosenIndex() const
{
    const auto chosen =
        std::find_if(m_options.begin(), m_options.end(),
                     [tag = m_selection.get()](const auto& option) { return option.tag == tag; });
    return chosen == m_options.end() ? -1 : static_cast<int>(chosen - m_options.begin());
}

void OrvaRadioGroupView::showSelection()
{
    const int chosen = chosenIndex();
    for (int index = 0; index < m_buttons.size(); ++index) {
        m_buttons.at(index)->setChecked(index == chosen);
        m_buttons.at(index)->setFocusPolicy(index == std::max(0, chosen) ? Qt::StrongFocus : Qt::ClickFocus);
    }
}

bool OrvaRadioGroupView::choose(int index)
{
    return m_selection.set(m_options.at(index).tag);
}

void OrvaRadioGroupView::choosePast(int index, int step)
{
    const int count = static_cast<int>(m_buttons.size());
    const int next = (index + step + count) % count;
    if (!choose(next) || m_buttons.isEmpty())
        return;
    const int chosen = chosenIndex();
    m_buttons.at(chosen < 0 ? std::min(next, static_cast<int>(m_buttons.size()) - 1) : chosen)
        ->setFocus(Qt::TabFocusReason);
}

} // namespace orvane
