#include "Orvane/HomeWindowController.h"

#include "Platform/Application.h"
#include "Platform/Platform.h"

#include <QGuiApplication>
#include <QIcon>
#include <QScreen>
#include <QVBoxLayout>
#include <QWidget>

namespace orvane {

namespace {

constexpr QSize contentSize(940, 640);
constexpr QSize minimumContentSize(820, 560);

/// Where a window can be seen whole, with room for its frame.
QRect availableGeometry()
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen ? screen->availableGeometry().adjusted(8, 32, -8, -8) : QRect(QPoint(), contentSize);
}

} // namespace

HomeWindowController::HomeWindowController() = default;
HomeWindowController::~HomeWindowController() = default;

void HomeWindowController::setMakeContentView(std::function<AnyView()> makeContentView)
{
    m_makeContentView = std::move(makeContentView);
}

void HomeWindowController::show()
{
    if (!m_window && m_makeContentView) {
        m_window = std::make_unique<QWidget>();
        m_window->setWindowTitle(QStringLiteral("Orvane"));
        m_window->setWindowIcon(QIcon(QStringLiteral(":/icons/net.lindenrow.orvane.svg")));
        const QRect available = availableGeometry();
        m_window->setMinimumSize(minimumContentSize.boundedTo(available.size()));
        m_window->resize(contentSize.boundedTo(available.size()));
        auto* layout = new QVBoxLayout(m_window.get());
        layout->setContentsMargins(0, 0, 0, 0);
        if (QWidget* content = m_makeContentView().makeWidget())
            layout->addWidget(content);
        m_window->move(available.center() - m_window->rect().center());
    }
    if (!m_window)
        return;
    m_window->setWindowState(m_window->windowState() & ~Qt::WindowMinimized);
    m_window->show();
    m_window->raise();
    m_window->activateWindow();
    platform().application.activateIgnoringOtherApps();
}

} // namespace orvane
