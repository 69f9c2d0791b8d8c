#include "PlatformLinux/Session/AboutPanel.h"

#include "PlatformLinux/Common/OwnName.h"

#include <QApplication>
#include <QIcon>
#include <QKeyEvent>
#include <QLabel>
#include <QVBoxLayout>

namespace orvane {

namespace {

constexpr QSize panelSize(300, 260);
constexpr int iconSide = 96;

QLabel* line(const QString& text, double points, QFont::Weight weight)
{
    auto* label = new QLabel(text);
    label->setAlignment(Qt::AlignCenter);
    QFont font = label->font();
    font.setPointSizeF(points);
    font.setWeight(weight);
    label->setFont(font);
    return label;
}

} // namespace

AboutPanel::AboutPanel()
{
    const QString name = ownName;
    setWindowFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QCoreApplication::translate("AboutPanel", "About %1").arg(name));
    const QIcon icon(QStringLiteral(":/icons/net.lindenrow.orvane.svg"));
    setWindowIcon(icon);
    setFixedSize(panelSize);

    auto* picture = new QLabel;
    picture->setAlignment(Qt::AlignCenter);
    picture->setPixmap(icon.pixmap(QSize(iconSide, iconSide), devicePixelRatioF()));
    picture->setAccessibleName(name);
    auto* version = line(
        QCoreApplication::translate("AboutPanel", "Version %1").arg(QCoreApplication::applicationVersion()),
        10, QFont::Normal);
    version->setTextInteractionFlags(Qt::TextSelectableByMouse);
    version->setForegroundRole(QPalette::PlaceholderText);

    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(6);
    layout->addStretch();
    layout->addWidget(picture);
    layout->addSpacing(8);
    layout->addWidget(line(name, 18, QFont::Bold));
    layout->addWidget(version);
    layout->addStretch();
}

void AboutPanel::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape || event->matches(QKeySequence::Close) ||
        (event->key() == Qt::Key_W && event->modifiers() == Qt::ControlModifier))
        close();
    else
        QWidget::keyPressEvent(event);
}

} // namespace orvane
