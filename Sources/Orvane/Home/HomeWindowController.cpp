#include "Orvane/Home/HomeWindowController.h"

#include "Orvane/Home/HomeWindowPlacement.h"
#include "Orvane/Home/RootView.h"
#include "Platform/Application.h"
#include "Platform/Platform.h"

#include <QEvent>
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

/// Calls when its window is hidden by anything but its own minimizing.
class HidingWatch : public QObject {
public:
    HidingWatch(QWidget& window, std::function<void()> handler)
        : QObject(&window), m_handler(std::move(handler))
    {
        window.installEventFilter(this);
    }

private:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        // The window's part in what hides it has to end first: closing goes on after this event.
        if (event->type() == QEvent::Hide && !event->spontaneous())
            QMetaObject::invokeMethod(this, m_handler, Qt::QueuedConnection);
        return QObject::eventFilter(watched, event);
    }

    std::function<void()> m_handler;
};

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

void HomeWindowController::showInTaskBar()
{
    if (!m_window && m_makeContentView)
        makeWindow();
    if (m_window && !m_window->isVisible())
        m_window->showMinimized();
}

void HomeWindowController::leaveTaskBar()
{
    if (m_window && m_window->isVisible() && m_window->isMinimized())
        m_window->hide();
}

void HomeWindowController::setWentOutOfSight(std::function<void()> handler)
{
    m_wentOutOfSight = std::move(handler);
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
    new HidingWatch(*m_window, [this] {
        if (!m_window->isVisible())
            m_wentOutOfSight();
    });
}

void HomeWindowController::place()
{
    const QRect geometry = HomeWindowPlacement::centred(HomeWindowPlacement::contentSize, mainScreen());
    m_window->setMinimumSize(RootView::minimumSize.boundedTo(geometry.size()));
    m_window->setGeometry(geometry);
}

} // namespace orvane
