#include "Capabilities/ClipboardHistory/Panel/HistoryPanelView.h"

#include "Capabilities/ClipboardHistory/ClipboardHistoryText.h"
#include "Capabilities/ClipboardHistory/Panel/HistoryListView.h"
#include "OrvaneKit/Controls/OrvaMenuView.h"
#include "OrvaneKit/Controls/OrvaTextView.h"
#include "OrvaneKit/Theme/OrvaSymbol.h"
#include "Platform/Pasteboard.h"
#include "Platform/Platform.h"

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPointer>
#include <QStackedLayout>
#include <QVBoxLayout>

namespace orvane {

namespace {

constexpr int searchPadding = 10;
constexpr int searchGap = 8;
constexpr double symbolSide = 16;
constexpr qsizetype mostPasted = 1000; // more than a person would search for

/// A line from edge to edge.
class DividerView final : public OrvaThemed<QWidget> {
public:
    DividerView() { setFixedHeight(1); }

protected:
    void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), orvaColor(OrvaColor::divider)); }
};

/// A line edit without a frame. It pastes through the platform: the toolkit would wait for a program that
/// hangs.
class SearchField final : public OrvaThemed<QLineEdit> {
public:
    SearchField()
    {
        setFrame(false);
        setPlaceholderText(ClipboardHistoryText::tr("Search clipboard…"));
        setAccessibleName(ClipboardHistoryText::tr("Search clipboard"));
        setTextMargins(-2, 0, -2, 0); // takes back the line edit's own margins
        themeChanged();
    }

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        if (event->matches(QKeySequence::Paste))
            pasteFromPasteboard();
        else
            OrvaThemed::keyPressEvent(event);
    }

    void contextMenuEvent(QContextMenuEvent* event) override
    {
        auto* menu = new OrvaMenuView(this);
        menu->setAttribute(Qt::WA_DeleteOnClose);
        if (hasSelectedText()) {
            menu->addAction(ClipboardHistoryText::tr("Cut"), this, &QLineEdit::cut);
            menu->addAction(ClipboardHistoryText::tr("Copy"), this, &QLineEdit::copy);
        }
        menu->addAction(ClipboardHistoryText::tr("Paste"), this, &SearchField::pasteFromPasteboard);
        if (!text().isEmpty())
            menu->addAction(ClipboardHistoryText::tr("Select All"), this, &QLineEdit::selectAll);
        m_menu = menu;
        menu->popup(event->globalPos());
    }

    /// What arrives later isn't for the next showing.
    void hideEvent(QHideEvent* event) override
    {
        OrvaThemed::hideEvent(event);
        m_paste.reset();
        if (m_menu)
            m_menu->close();
    }

    void themeChanged() override
    {
        setFont(orvaFont(OrvaFont::body));
        setOrvaFieldColors(*this);
    }

private:
    void pasteFromPasteboard()
    {
        m_paste = platform().generalPasteboard.read({pasteboardType::string}, [this](const auto& contents) {
            if (const auto text = contents ? contents->stringForType(pasteboardType::string) : std::nullopt)
                insert(text->left(mostPasted));
            m_paste.reset();
        });
    }

    std::unique_ptr<PasteboardRead> m_paste;
    QPointer<QMenu> m_menu;
};

} // namespace

HistoryPanelView::HistoryPanelView(HistoryViewModel& model)
    : m_model(model), m_list(new HistoryListView(model)), m_rest(new QStackedLayout)
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(makeSearchRow());
    column->addWidget(new DividerView);
    column->addLayout(m_rest, 1);
    m_rest->addWidget(makeEmptyText());
    m_rest->addWidget(m_list);
    m_list->onTyping = [this](QKeyEvent* key) {
        m_field->setFocus(Qt::OtherFocusReason);
        QCoreApplication::sendEvent(m_field, key);
    };
    followModel();
}

HistoryPanelView::~HistoryPanelView() = default;

QWidget* HistoryPanelView::makeSearchRow()
{
    auto* widget = new QWidget;
    auto* line = new QHBoxLayout(widget);
    line->setContentsMargins(searchPadding, searchPadding, searchPadding, searchPadding);
    line->setSpacing(searchGap);
    line->addWidget(new OrvaSymbolView(QStringLiteral("magnifyingglass"), symbolSide, OrvaColor::secondary));
    m_field = new SearchField;
    line->addWidget(m_field, 1);
    return widget;
}

QWidget* HistoryPanelView::makeEmptyText()
{
    auto* text = new OrvaTextView(ClipboardHistoryText::tr("No clipboard history yet"), OrvaFont::body,
                                  OrvaColor::secondary);
    text->setAlignment(Qt::AlignCenter);
    return text;
}

void HistoryPanelView::followModel()
{
    connect(m_field, &QLineEdit::textChanged, this, [this](const QString& text) {
        if (text != m_model.query.get())
            m_model.query.set(text);
    });
    connect(m_field, &QLineEdit::returnPressed, this, [this] { chooseFirst(); });
    m_cancellables.push_back(m_model.query.subscribe([this](const QString& query) {
        if (query != m_field->text())
            m_field->setText(query);
        modelChanged();
    }));
    m_cancellables.push_back(m_model.items.onChange([this] { modelChanged(); }));
}

/// Each copy changes the list; while the panel is hidden, the list waits for the next showing.
void HistoryPanelView::modelChanged()
{
    m_isStale = true;
    if (isVisible())
        refilter();
}

void HistoryPanelView::refilter()
{
    m_isStale = false;
    m_list->setItems(m_model.filtered());
    const bool listHadFocus = m_list->hasFocus();
    m_rest->setCurrentIndex(m_list->rowCount() > 0 ? 1 : 0);
    if (listHadFocus && m_list->rowCount() == 0)
        m_field->setFocus(Qt::OtherFocusReason);
}

bool HistoryPanelView::showsEmptyText() const
{
    return m_rest->currentIndex() == 0;
}

void HistoryPanelView::prepareForShowing()
{
    if (m_isStale)
        refilter();
    m_list->startAnew();
    m_field->setFocus(Qt::OtherFocusReason);
}

void HistoryPanelView::chooseFirst()
{
    m_list->press(0);
}

void HistoryPanelView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Escape) {
        OrvaThemed::keyPressEvent(event);
        return;
    }
    if (const auto close = m_model.onClose)
        close();
}

void HistoryPanelView::hideEvent(QHideEvent* event)
{
    OrvaThemed::hideEvent(event);
    m_list->closeMenu();
}

} // namespace orvane
