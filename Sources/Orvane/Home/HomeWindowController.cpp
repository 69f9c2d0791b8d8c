#include "Orvane/Home/HomeWindowController.h"

#include "Orvane/Home/HomeWindowPlacement.h"
#include "Orvane/Home/RootView.h"
#include "Platform/Application.h"
#include "Platform/DefaultsStore.h"
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

const QString frameKey = QStringLiteral("app.homeFrame");
const QString maximizedKey = QStringLiteral("app.homeIsMaximized");

/// Returns the stored rectangle; a text that is none counts as absent.
std::optional<QRect> storedFrame()
{
    const QVariant value = platform().standardDefaults.object(frameKey);
    QList<int> numbers;
    for (const QString& word : value.toString().split(u' ', Qt::SkipEmptyParts)) {
        bool isNumber = false;
        numbers.append(word.toInt(&isNumber));
        if (!isNumber)
            return std::nullopt;
    }
    if (numbers.size() != 4 || numbers[2] <= 0 || numbers[3] <= 0)
        return std::nullopt;
    return QRect(numbers[0], numbers[1], numbers[2], numbers[3]);
}

void storeFrame(const QWidget& window)
{
    const QRect frame = window.isMaximized() ? window.normalGeometry() : window.geometry();
    if (!frame.isValid())
        return;
    DefaultsStore& defaults = platform().standardDefaults;
    defaults.set(
        frameKey,
        QStringLiteral("%1 %2 %3 %4").arg(frame.x()).arg(frame.y()).arg(frame.width()).arg(frame.height()));
    defaults.set(maximizedKey, window.isMaximized());
}

/// Calls for what happens to its window.
class WindowWatch : public QObject {
public:
    struct Handlers {
        /// Called in a later turn when the window is hidden by anything but its own minimizing.
        std::function<void()> hidden;
        /// Called when the window goes out of use for now.
        std::function<void()> left;
        /// Called when the window is seen as one again.
        std::function<void()> restored;
    };

    WindowWatch(QWidget& window, Handlers handlers)
        : QObject(&window), m_window(window), m_handlers(std::move(handlers))
    {
        window.installEventFilter(this);
    }

private:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        switch (event->type()) {
        case QEvent::Hide:
            if (event->spontaneous())
                break;
            m_handlers.left();
            // The window's part in what hides it has to end first: closing goes on after this event.
            QMetaObject::invokeMethod(this, m_handlers.hidden, Qt::QueuedConnection);
            break;
        case QEvent::WindowDeactivate:
            m_handlers.left();
            break;
        case QEvent::WindowStateChange:
            if (!m_window.isMinimized())
                m_handlers.restored();
            break;
        default:
            break;
        }
        return QObject::eventFilter(watched, event);
    }

    QWidget& m_window;
    Handlers m_handlers;
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
        centre();
    m_isEntryAlone = false;
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
    if (!m_window || m_window->isVisible())
        return;
    m_isEntryAlone = true;
    m_window->showMinimized();
}

void HomeWindowController::leaveTaskBar()
{
    if (m_isEntryAlone && m_window->isMinimized())
        m_window->hide();
    m_isEntryAlone = false;
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
    new WindowWatch(*m_window, {.hidden =
                                    [this] {
                                        if (!m_window->isVisible())
                                            m_wentOutOfSight();
                                    },
                                .left =
                                    [this] {
                                        if (!m_window->isMinimized())
                                            storeFrame(*m_window);
                                    },
                                .restored = [this] { m_isEntryAlone = false; }});
}

/// The window is where it was when it was left, if that can still be reached.
void HomeWindowController::place()
{
    centre();
    const auto frame = storedFrame();
    if (!frame || !HomeWindowPlacement::isReachable(*frame, allScreens()))
        return;
    m_window->setGeometry(QRect(frame->topLeft(), frame->size().expandedTo(m_window->minimumSize())));
    if (platform().standardDefaults.boolean(maximizedKey))
        m_window->setWindowState(Qt::WindowMaximized);
}

void HomeWindowController::centre()
{
    const QRect geometry = HomeWindowPlacement::centred(HomeWindowPlacement::contentSize, mainScreen());
    m_window->setMinimumSize(RootView::minimumSize.boundedTo(geometry.size()));
    m_window->setGeometry(geometry);
}

} // namespace orvane
