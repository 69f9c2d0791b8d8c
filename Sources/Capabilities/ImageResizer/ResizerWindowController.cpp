#include "Capabilities/ImageResizer/ResizerWindowController.h"

#include "Capabilities/ImageResizer/ImageResizerText.h"
#include "Capabilities/ImageResizer/ResizerView.h"
#include "Platform/Application.h"
#include "Platform/Platform.h"

#include <QGuiApplication>
#include <QIcon>
#include <QScreen>
#include <QVBoxLayout>
#include <QWidget>

namespace orvane {

namespace {

constexpr QSize contentSize{460, 520};

} // namespace

ResizerWindowController::ResizerWindowController(std::shared_ptr<ImageResizerSettings> settings)
    : m_model(std::make_shared<ResizerModel>(std::move(settings)))
{
}

ResizerWindowController::~ResizerWindowController() = default;

void ResizerWindowController::show()
{
    if (!m_window)
        makeWindow();
    m_window->setWindowState(m_window->windowState() & ~Qt::WindowMinimized);
    m_window->show();
    m_window->raise();
    m_window->activateWindow();
    platform().application.activateIgnoringOtherApps();
}

void ResizerWindowController::makeWindow()
{
    m_window = std::make_unique<QWidget>();
    m_window->setWindowTitle(ImageResizerText::tr("Image Resizer"));
    m_window->setWindowIcon(QIcon(QStringLiteral(":/icons/net.lindenrow.orvane.svg")));
    m_window->setWindowFlags(Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                             Qt::WindowCloseButtonHint | Qt::WindowMinimizeButtonHint);
    auto* layout = new QVBoxLayout(m_window.get());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(AnyView(ResizerView{m_model}).makeWidget());
    const QScreen* screen = QGuiApplication::primaryScreen();
    const QRect room = screen ? screen->availableGeometry() : QRect(QPoint(), contentSize);
    m_window->setFixedSize(contentSize.boundedTo(room.size()));
    m_window->move(room.center() - m_window->rect().center());
}

} // namespace orvane
