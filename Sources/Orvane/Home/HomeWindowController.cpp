#include "Orvane/Home/HomeWindowController.h"

#include "Orvane/Home/HomeWindowPlacement.h"
#include "Orvane/Home/RootView.h"
#include "Platform/Application.h"
#include "Platform/Platform.h"

#include <QGuiApplication>
#include <QIcon>
#include <QScreen>
#include <QVBoxLayout>
#include <QWidget>

namespace orvane {

namespace {

QRect mainScreen()
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen ? screen->availableGeometry() : QRect(QPoint(), HomeWindowPlacement::contentSize);
}

QList<QRect> allScreens()
{
    QList<QRect> screens;
    for (const QScreen* screen : QGuiApplication::screens())
        screens.append(screen->availableGeometry());
    return screens;
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
    if (!m_window && m_makeContentView)
        makeWindow();
    if (!m_window)
        return;
    // Its screen may have gone while it was hidden.
    if (!m_window->isVisible() && !HomeWindowPlacement::isReachable(m_window->geometry(), allScreens()))
        place();
    m_window->setWindowState(m_window->windowState() & ~Qt::WindowMinimized);
    m_window->show();
    m_window->raise();
    m_window->activateWindow();
    platform().application.activateIgnoringOtherApps();
}

void HomeWindowController::makeWindow()
{
    m_window = std::make_unique<QWidget>();
    m_window->setWindowTitle(QStringLiteral("Orvane"));
    m_window->setWindowIcon(QIcon(QStringLiteral(":/icons/net.lindenrow.orvane.svg")));
    auto* layout = new QVBoxLayout(m_window.get());
    layout->setContentsMargins(0, 0, 0, 0);
    if (QWidget* content = m_makeContentView().makeWidget())
        layout->addWidget(content);
    place();
}

void HomeWindowController::place()
{
    const QRect geometry = HomeWindowPlacement::centred(HomeWindowPlacement::contentSize, mainScreen());
    m_window->setMinimumSize(RootView::minimumSize.boundedTo(geometry.size()));
    m_window->setGeometry(geometry);
}

} // namespace orvane
