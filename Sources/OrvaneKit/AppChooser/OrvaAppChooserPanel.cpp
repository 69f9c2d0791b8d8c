#include "OrvaneKit/AppChooser/OrvaAppChooserPanel.h"

#include "OrvaneKit/AppChooser/OrvaAppListView.h"
#include "OrvaneKit/Controls/OrvaButtonView.h"
#include "OrvaneKit/Controls/OrvaSearchFieldView.h"
#include "OrvaneKit/Controls/OrvaTextView.h"
#include "OrvaneKit/Lists/OrvaStackView.h"
#include "OrvaneKit/Model/KitText.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace orvane {

namespace {

constexpr QSize panelSize(420, 520);
constexpr QSize minimumPanelSize(320, 320);
constexpr int edge = 16;
constexpr int gap = 12;

} // namespace

OrvaAppChooserPanel::OrvaAppChooserPanel(Programs programs, std::function<void(const QString&)> accepted,
                                         QWidget* parent)
    : OrvaThemed(parent),
      m_accepted(std::move(accepted)),
      m_model(std::move(programs.installed), std::move(programs.present)),
      m_field(new OrvaSearchFieldView(KitText::tr("Search applications"))),
      m_list(new OrvaAppListView(m_model)),
      m_pages(new QStackedWidget)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(KitText::tr("Choose an Application"));
    if (parent)
        setWindowIcon(parent->windowIcon());
    setMinimumSize(minimumPanelSize);
    resize(panelSize);

    auto* lines = new QVBoxLayout(this);
    lines->setContentsMargins(0, 0, 0, 0);
    lines->setSpacing(0);
    auto* head = new QHBoxLayout;
    constexpr int headEdge = edge - orvaRingMargin;
    head->setContentsMargins(headEdge, headEdge, headEdge, gap - orvaRingMargin);
    head->addWidget(m_field);
    lines->addLayout(head);
    lines->addWidget(new OrvaDividerView(OrvaDividerView::Reach::edgeToEdge));
    lines->addWidget(makeList(), 1);
    lines->addWidget(new OrvaDividerView(OrvaDividerView::Reach::edgeToEdge));
    lines->addWidget(makeButtons());

    connect(m_field, &QLineEdit::textChanged, this, &OrvaAppChooserPanel::search);
    connect(m_list, &QAbstractItemView::doubleClicked, this, &OrvaAppChooserPanel::accept);
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { m_canAccept->set(m_list->chosen().has_value()); });
    connect(&m_model, &QAbstractItemModel::modelReset, this,
            [this] { m_canAccept->set(m_list->chosen().has_value()); });
    showQuietText({});
    m_field->setFocus();
}

OrvaAppChooserPanel::~OrvaAppChooserPanel()
{
    // The list's selection reports here while there is a model, so it ends first.
    delete m_list;
}

QWidget* OrvaAppChooserPanel::makeList()
{
    const Live<QString> text([quiet = m_quietText] { return quiet->get(); }, {m_quietText});
    auto* quiet = new QWidget;
    auto* lines = new QVBoxLayout(quiet);
    lines->setContentsMargins(edge, edge, edge, edge);
    auto* label = new OrvaTextView(text, OrvaFont::body, OrvaColor::secondary);
    label->setAlignment(Qt::AlignCenter);
    lines->addWidget(label);
    m_pages->addWidget(m_list);
    m_pages->addWidget(quiet);
    return m_pages;
}

QWidget* OrvaAppChooserPanel::makeButtons()
{
    auto* foot = new QWidget;
    auto* line = new QHBoxLayout(foot);
    constexpr int footEdge = edge - orvaRingMargin;
    line->setContentsMargins(footEdge, gap - orvaRingMargin, footEdge, gap - orvaRingMargin);
    line->setSpacing(gap - 2 * orvaRingMargin);
    line->addStretch(1);
    auto* cancel = new OrvaButtonView(OrvaButton{KitText::tr("Cancel"), [this] { reject(); }});
    auto* add = new OrvaButtonView(
        OrvaButton{.title = KitText::tr("Add"),
                   .action = [this] { accept(); },
                   .enabled = Live<bool>([can = m_canAccept] { return can->get(); }, {m_canAccept})});
    cancel->setAutoDefault(false);
    add->setAutoDefault(false);
    add->setDefault(true);
    line->addWidget(cancel);
    line->addWidget(add);
    m_cancel = cancel;
    return foot;
}

void OrvaAppChooserPanel::search(const QString& query)
{
    const std::optional<InstalledApplication> before = m_list->chosen();
    m_model.setQuery(query);
    if (!query.trimmed().isEmpty())
        m_list->chooseFirst();
    else if (before)
        m_list->choose(*before);
    showQuietText(query.trimmed());
}

void OrvaAppChooserPanel::showQuietText(const QString& query)
{
    const bool listed = m_model.rowCount() > 0;
    m_quietText->set(listed ? QString()
                     : m_model.isEmptyWithoutQuery()
                         ? KitText::tr("No applications were found.")
                         : KitText::tr("No application matches “%1”.").arg(query));
    m_pages->setCurrentIndex(listed ? 0 : 1);
}

void OrvaAppChooserPanel::accept()
{
    const std::optional<InstalledApplication> chosen = m_list->chosen();
    if (!chosen || !isVisible())
        return;
    // The panel is hidden before the callback runs.
    const auto accepted = std::exchange(m_accepted, nullptr);
    OrvaThemed::accept();
    if (accepted)
        accepted(*chosen->bundleIdentifier);
}

void OrvaAppChooserPanel::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Up:
        return m_list->move(-1);
    case Qt::Key_Down:
        return m_list->move(1);
    case Qt::Key_PageUp:
        return m_list->move(-m_list->programsInSight());
    case Qt::Key_PageDown:
        return m_list->move(m_list->programsInSight());
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return m_cancel->hasFocus() ? reject() : accept();
    default:
        return OrvaThemed::keyPressEvent(event);
    }
}

void OrvaAppChooserPanel::paintEvent(QPaintEvent*)
{
    QPainter(this).fillRect(rect(), orvaColor(OrvaColor::window));
}

} // namespace orvane
