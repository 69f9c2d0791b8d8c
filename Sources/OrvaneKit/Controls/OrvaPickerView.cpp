#include "OrvaneKit/Controls/OrvaPickerView.h"

#include "OrvaneKit/Controls/OrvaMenuView.h"
#include "OrvaneKit/Theme/OrvaAccessible.h"
#include "OrvaneKit/Theme/OrvaSymbol.h"

#include <QAccessibleWidget>
#include <QSignalBlocker>
#include <QWheelEvent>

#include <algorithm>

namespace orvane {

namespace {

constexpr int boxHeight = 28;
constexpr int textInset = 10;
constexpr int arrowsWidth = 26;
constexpr double corner = 7;
constexpr int menuOverhang = 23; // from the menu's edge to the control's, so that their texts are in line

/// The stock combo box uses its present choice as its name on this system; a picker uses its title, and the
/// choice as its value and description.
class AccessiblePicker final : public QAccessibleWidget {
public:
    explicit AccessiblePicker(OrvaPickerView* picker) : QAccessibleWidget(picker, QAccessible::ComboBox) {}

    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        if (kind == QAccessible::Value || kind == QAccessible::Description)
            return picker().currentText();
        return QAccessibleWidget::text(kind);
    }

    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.expandable = true;
        state.hasPopup = true;
        return state;
    }

    [[nodiscard]] QStringList actionNames() const override
    {
        return QStringList{showMenuAction(), pressAction()} + QAccessibleWidget::actionNames();
    }

    void doAction(const QString& action) override
    {
        if (action == showMenuAction() || action == pressAction())
            picker().showPopup();
        else
            QAccessibleWidget::doAction(action);
    }

private:
    [[nodiscard]] OrvaPickerView& picker() const { return static_cast<OrvaPickerView&>(*widget()); }
};

} // namespace

OrvaPickerView::OrvaPickerView(Binding<QString> selection, const Live<QList<OrvaPickerOption>>& options,
                               const QString& name)
    : m_selection(std::move(selection))
{
    describeWith<OrvaPickerView, AccessiblePicker>();
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    setAccessibleName(name);
    themeChanged();
    m_selection.follow(*this, [this](const QString& tag) { showSelection(tag); });
    follow(m_cancellables, options, [this](const QList<OrvaPickerOption>& list) { showOptions(list); });
    connect(this, &QComboBox::currentIndexChanged, this, [this] {
        QAccessibleEvent changed(this, QAccessible::DescriptionChanged);
        QAccessible::updateAccessibility(&changed);
    });
    connect(this, &QComboBox::activated, this, &OrvaPickerView::choose);
}

OrvaPickerView::~OrvaPickerView()
{
    delete m_menu;
}

void OrvaPickerView::themeChanged()
{
    setFont(orvaFont(OrvaFont::body));
    updateGeometry();
}

void OrvaPickerView::showOptions(const QList<OrvaPickerOption>& options)
{
    {
        const QSignalBlocker quiet(this);
        clear();
        for (const OrvaPickerOption& option : options)
            addItem(option.title, option.tag);
    }
    m_selection.show();
    updateGeometry();
}

void OrvaPickerView::showSelection(const QString& tag)
{
    setCurrentIndex(findData(tag));
    update();
}

void OrvaPickerView::choose(int index)
{
    if (index >= 0)
        m_selection.set(itemData(index).toString());
}

void OrvaPickerView::showPopup()
{
    if (count() == 0)
        return;
    delete m_menu;
    m_menu = new OrvaMenuView(this);
    m_menu->setMinimumWidth(width() - 2 * orvaRingMargin + menuOverhang);
    QAction* present = nullptr;
    for (int index = 0; index < count(); ++index) {
        QAction* action = m_menu->addAction(escapedMnemonics(itemText(index)));
        action->setCheckable(true);
        action->setChecked(index == currentIndex());
        if (index == currentIndex())
            present = action;
        connect(action, &QAction::triggered, this, [this, index] {
            setCurrentIndex(index);
            choose(index);
        });
    }
    connect(m_menu, &QMenu::aboutToHide, m_menu, &QObject::deleteLater);
    // The present choice lies over the control, its text over the control's text.
    const int offset =
        m_menu->actionGeometry(present ? present : m_menu->actions().constFirst()).height() / 2;
    m_menu->popup(mapToGlobal(QPoint(orvaRingMargin - menuOverhang, height() / 2 - offset)), present);
    m_menu->setActiveAction(present);
}

void OrvaPickerView::hidePopup()
{
    if (m_menu)
        m_menu->hide();
}

QSize OrvaPickerView::sizeHint() const
{
    const QFontMetrics metrics(font());
    int widest = 24;
    for (int index = 0; index < count(); ++index)
        widest = std::max(widest, metrics.horizontalAdvance(itemText(index)));
    const int height = std::max(boxHeight, metrics.height() + 10);
    return QSize(textInset + widest + 2 + arrowsWidth + 2 * orvaRingMargin, height + 2 * orvaRingMargin);
}

QSize OrvaPickerView::minimumSizeHint() const
{
    const QSize whole = sizeHint();
    return QSize(std::min(whole.width(), 140), whole.height());
}

void OrvaPickerView::wheelEvent(QWheelEvent* event)
{
    event->ignore();
}

void OrvaPickerView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setOpacity(ownOpacity());
    const QRectF box = shape();
    paintOrvaControlBox(painter, box, corner, m_menu && m_menu->isVisible());

    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    QRectF text = box.adjusted(textInset, 0, -arrowsWidth, 0);
    QRectF arrows(box.right() - arrowsWidth, box.top(), arrowsWidth, box.height());
    if (mirrored) {
        text = box.adjusted(arrowsWidth, 0, -textInset, 0);
        arrows.moveLeft(box.left());
    }
    painter.setPen(orvaColor(OrvaColor::primary));
    painter.drawText(
        text, QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter),
        fontMetrics().elidedText(currentText(), Qt::ElideRight, static_cast<int>(text.width()) + 1));
    paintOrvaSymbol(painter, QStringLiteral("chevron.up.chevron.down"),
                    QRectF(arrows.center() - QPointF(7, 7), QSizeF(14, 14)), orvaColor(OrvaColor::secondary),
                    SystemSymbol::Weight::semibold);
    if (showsFocusRing())
        paintOrvaFocusRing(painter, box, corner);
}

} // namespace orvane
