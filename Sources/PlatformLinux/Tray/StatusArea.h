// The part of the desktop where status items stand: which kind there is at present, and the colour that can
// be read on it. Shared by the items of a process. Main thread.
#pragma once

#include "PlatformLinux/Menus/TemplateTint.h"
#include "PlatformLinux/Tray/StatusNotifierHostWatch.h"
#include "PlatformLinux/Tray/XEmbedTrayWatch.h"

namespace orvane {

class LogSink;

class StatusArea : public QObject {
    Q_OBJECT
public:
    enum class Kind { none, notifierHost, xembedTray };

    /// `log` outlives the area.
    explicit StatusArea(LogSink& log);

    [[nodiscard]] Kind kind() const { return m_kind; }
    [[nodiscard]] const StatusNotifierHostWatch& host() const { return m_host; }
    [[nodiscard]] const XEmbedTrayWatch& xembed() const { return m_xembed; }
    [[nodiscard]] TrayTint tint() const;

Q_SIGNALS:
    /// Emitted when the area is of another kind, or the same kind was started anew: items have to register
    /// again.
    void changed();
    void tintChanged();

private:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void update();
    void logOnce(bool& done, const QString& message);

    LogSink& m_log;
    StatusNotifierHostWatch m_host;
    XEmbedTrayWatch m_xembed;
    Kind m_kind = Kind::none;
    bool m_saidNoBus = false;
    bool m_saidNoArea = false;
};

} // namespace orvane
