// The clipboard of an X display. A thread with its own connection owns, serves and reads it; this is the main
// thread's side, which only changes what the two share and leaves messages. The thread begins with the first
// question: changes are counted from there on.
#pragma once

#include "Platform/LogSink.h"
#include "Platform/Pasteboard.h"
#include "Platform/RunLoop.h"
#include "PlatformLinux/X11/SessionKind.h"

#include <memory>

namespace orvane {

class PasteboardState;
class PasteboardThread;
class PasteboardWatches;
class WorkerPictures;

class X11Pasteboard : public Pasteboard {
public:
    /// `desktops` is the value of XDG_CURRENT_DESKTOP.
    X11Pasteboard(LogSink& log, RunLoop& runLoop, SessionKind session = sessionKind(),
                  const QString& desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP"));
    ~X11Pasteboard() override;

    [[nodiscard]] QString limitation() const override;
    [[nodiscard]] int changeCount() const override;
    std::unique_ptr<PasteboardWatch> watch(std::function<void()> handler) override;
    std::unique_ptr<PasteboardRead> read(const QStringList& types, Completion completion) override;
    int clearContents() override;
    bool setString(const QString& string, const QString& type) override;
    bool setData(const QByteArray& data, const QString& type) override;
    bool writeObjects(const QList<QUrl>& fileURLs) override;
    bool writeObjects(const PasteboardImage& image) override;

    /// Ends the conversion of a picture that runs, and fails all that come after it.
    void giveUp();

private:
    class Read;

    [[nodiscard]] const std::shared_ptr<PasteboardThread>& thread() const;

    LogSink& m_log;
    RunLoop& m_runLoop;
    const SessionKind m_session;
    /// True on a desktop whose X server is told of each copy, also of those of Wayland programs.
    const bool m_desktopPassesCopiesOn;
    std::shared_ptr<PasteboardState> m_state;
    std::shared_ptr<PasteboardWatches> m_watches;
    /// With a worker of their own, so that the copy of a picture doesn't wait for other pictures.
    std::shared_ptr<WorkerPictures> m_pictures;
    mutable std::shared_ptr<PasteboardThread> m_thread; // null until it is needed
};

} // namespace orvane
