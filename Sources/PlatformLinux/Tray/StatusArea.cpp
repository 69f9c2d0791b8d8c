#include "PlatformLinux/Tray/StatusArea.h"

#include "Platform/LogSink.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPalette>

namespace orvane {

StatusArea::StatusArea(LogSink& log) : m_log(log)
{
    connect(&m_host, &StatusNotifierHostWatch::changed, this, &StatusArea::update);
    connect(&m_xembed, &XEmbedTrayWatch::trayChanged, this, [this] {
        update();
        Q_EMIT tintChanged();
    });
    connect(&m_xembed, &XEmbedTrayWatch::foregroundChanged, this, &StatusArea::tintChanged);
    qApp->installEventFilter(this);
}

TrayTint StatusArea::tint() const
{
    const QColor ownColour = QGuiApplication::palette().color(QPalette::WindowText);
    return {m_xembed.foreground().value_or(ownColour), TrayTint::Contour::opposite};
}

void StatusArea::update()
{
    // Before the bus has answered, an item would leave an XEmbed tray again soon after.
    if (m_host.state() == StatusNotifierHostWatch::State::asking)
        return;
    if (m_host.state() == StatusNotifierHostWatch::State::present)
        m_kind = Kind::notifierHost;
    else
        m_kind = m_xembed.tray() ? Kind::xembedTray : Kind::none;

    if (m_host.bus() == StatusNotifierHostWatch::Bus::none)
        logOnce(m_saidNoBus,
                QStringLiteral("No session bus: status items can stand in an XEmbed tray only."));
    if (m_kind == Kind::none)
        logOnce(m_saidNoArea, QStringLiteral("The desktop has no status area: waiting for one to appear."));
    Q_EMIT changed();
}

void StatusArea::logOnce(bool& done, const QString& message)
{
    if (done)
        return;
    done = true;
    m_log.write(LogLevel::notice, QStringLiteral("net.lindenrow.orvane"), QStringLiteral("StatusBar"),
                message);
}

bool StatusArea::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ApplicationPaletteChange && watched == qApp)
        Q_EMIT tintChanged();
    return QObject::eventFilter(watched, event);
}

} // namespace orvane
