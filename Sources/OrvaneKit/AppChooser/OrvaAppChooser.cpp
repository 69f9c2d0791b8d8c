#include "OrvaneKit/AppChooser/OrvaAppChooser.h"

#include "OrvaneKit/AppChooser/OrvaAppChooserPanel.h"
#include "Platform/Platform.h"
#include "Platform/Workspace.h"

#include <QApplication>
#include <QPointer>

namespace orvane::OrvaAppChooser {

void run(std::function<void(const QString& bundleID)> accepted, const QStringList& present)
{
    static QPointer<OrvaAppChooserPanel> panel;
    if (!panel || !panel->isVisible()) {
        panel = new OrvaAppChooserPanel({platform().sharedWorkspace.installedApplications(), present},
                                        std::move(accepted), QApplication::activeWindow());
        panel->open();
    }
    panel->raise();
    panel->activateWindow();
}

} // namespace orvane::OrvaAppChooser
