#include "KeyboardShortcuts/Recorder/RecorderAlertPanel.h"

#include "KeyboardShortcuts/KeyboardShortcutsText.h"
#include "OrvaneKit/Controls/OrvaButtonView.h"
#include "OrvaneKit/Controls/OrvaTextView.h"
#include "OrvaneKit/Theme/OrvaSymbol.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace orvane::KeyboardShortcuts {

namespace {

constexpr int edge = 20;
constexpr int gap = 16;
constexpr int lineGap = 6;
constexpr int textWidth = 300;
constexpr double symbolSide = 40;

OrvaTextView* makeText(const QString& text, OrvaFont font, OrvaColor color)
{
    auto* view = new OrvaTextView(text, font, color);
    view->setFixedWidth(textWidth);
    return view;
}

} // namespace

RecorderAlertPanel::RecorderAlertPanel(const QString& message, const QString& informativeText,
                                       QWidget* window)
    : OrvaThemed(window), m_messageText(message), m_informativeText(informativeText)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowFlags(Qt::Sheet | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
    setWindowTitle(window ? window->windowTitle() : QString());
    setAccessibleName(message);
    setAccessibleDescription(informativeText);

    auto* texts = new QVBoxLayout;
    texts->setSpacing(lineGap);
    texts->addWidget(makeText(message, OrvaFont::headline, OrvaColor::primary));
    if (!informativeText.isEmpty())
        texts->addWidget(makeText(informativeText, OrvaFont::callout, OrvaColor::secondary));
    texts->addStretch(1);

    auto* head = new QHBoxLayout;
    head->setSpacing(gap);
    head->addWidget(
        new OrvaSymbolView(QStringLiteral("exclamationmark.triangle.fill"), symbolSide, OrvaColor::orange), 0,
        Qt::AlignTop);
    head->addLayout(texts);

    auto* dismiss = new OrvaButtonView(OrvaButton{KeyboardShortcutsText::tr("OK"), [this] { accept(); }});
    dismiss->setDefault(true);

    auto* lines = new QVBoxLayout(this);
    lines->setContentsMargins(edge, edge, edge, edge - orvaRingMargin);
    lines->setSpacing(gap - orvaRingMargin);
    lines->addLayout(head);
    lines->addWidget(dismiss, 0, Qt::AlignRight);
    lines->setSizeConstraint(QLayout::SetFixedSize);
    dismiss->setFocus();
}

void RecorderAlertPanel::paintEvent(QPaintEvent*)
{
    QPainter(this).fillRect(rect(), orvaColor(OrvaColor::window));
}

} // namespace orvane::KeyboardShortcuts
