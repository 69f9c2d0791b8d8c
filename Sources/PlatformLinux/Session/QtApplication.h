// The application object on Qt: its life, its delegate, its task bar entry, and the signals that end it.
#pragma once

#include "Platform/Application.h"

#include <QList>
#include <QObject>
#include <QPointer>

#include <memory>

class QApplication;
class QSessionManager;
class QSocketNotifier;
class QWidget;
class QWindow;

namespace orvane {

class AboutPanel;
class LogSink;
class MainMenuView;

class QtApplication : public QObject, public Application {
    Q_OBJECT

public:
    /// Makes the QApplication. Ends the process with a message where there is no display.
    QtApplication(int& argc, char** argv, LogSink& log);
    ~QtApplication() override;

    /// The session starts with the argument of the login item, or with Qt's own of a restored session.
    [[nodiscard]] StartedBy startedBy() const override { return m_startedBy; }
    void setDelegate(ApplicationDelegate* delegate) override { m_delegate = delegate; }
    void setActivationPolicy(ActivationPolicy policy) override;
    [[nodiscard]] ActivationPolicy activationPolicy() const override { return m_policy; }
    void activateIgnoringOtherApps() override;
    void setMainMenu(std::shared_ptr<Menu> menu) override;
    [[nodiscard]] std::shared_ptr<const Menu> mainMenu() const override;
    [[nodiscard]] EventFlags keyEquivalentModifiers(EventFlags pressed) const override;
    void setWindowsMenu(std::shared_ptr<Menu> menu) override;
    bool sendAction(QStringView selector) override;
    void hide() override;
    void orderFrontStandardAboutPanel() override;
    void terminate() override;

    /// Runs the event loop, whose first act is to call the delegate; returns the exit status.
    int run();
    /// Called when a further start of the program reached this process.
    void reopen();

private:
    void launch();
    void unhide();
    [[nodiscard]] bool takesAction(QStringView selector) const;
    void endOnSignals();
    static void refuseRestoring(QSessionManager& manager);

    LogSink& m_log;
    StartedBy m_startedBy = StartedBy::person;
    std::unique_ptr<QApplication> m_application;
    std::unique_ptr<QSocketNotifier> m_signals;
    ApplicationDelegate* m_delegate = nullptr;
    std::unique_ptr<MainMenuView> m_mainMenu;
    /// The windows that hide() has put out of sight.
    QList<QPointer<QWidget>> m_hidden;
    QPointer<AboutPanel> m_aboutPanel;
    ActivationPolicy m_policy = ActivationPolicy::accessory;
    bool m_hasLaunched = false;
    /// True when a further start came before the launch and waits for it.
    bool m_reopenIsDue = false;
};

} // namespace orvane
