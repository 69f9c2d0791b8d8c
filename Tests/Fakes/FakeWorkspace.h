// A workspace that records what it is asked to open; the test completes it.
#pragma once

#include "Platform/Workspace.h"

#include <QStringList>

#include <functional>
#include <vector>

namespace orvane {

class FakeWorkspace : public Workspace {
public:
    struct Opened {
        QString path;
        OpenConfiguration configuration;
        OpenCompletion completion;
    };

    NotificationCenter& notificationCenter() override
    {
        onUse();
        return m_center;
    }
    void openApplication(const QString& path, OpenConfiguration configuration,
                         OpenCompletion completion) override
    {
        opened.push_back({path, configuration, std::move(completion)});
    }

    std::optional<RunningApplication> frontmostApplication() override { return frontmost; }
    QList<InstalledApplication> installedApplications() override { return installed; }

    /// Brings a program to the front as a person would; without a program, the notification carries none.
    void activate(const std::optional<RunningApplication>& application)
    {
        frontmost = application;
        QVariantMap userInfo;
        if (application)
            userInfo.insert(applicationKey(), QVariant::fromValue(*application));
        m_center.post(didActivateApplicationNotification(), userInfo);
    }

    bool activateApplication(const RunningApplication& application) override
    {
        activated.append(application);
        if (ended.contains(application.processIdentifier))
            return false;
        activate(application);
        return true;
    }

    bool openURL(const QString& url) override
    {
        openedURLs.append(url);
        return true;
    }

    std::optional<RunningApplication> frontmost;
    QList<InstalledApplication> installed;
    std::vector<Opened> opened;
    QStringList openedURLs;
    /// The programs that the program itself brought to the front.
    QList<RunningApplication> activated;
    /// Process identifiers of programs that have ended.
    QList<std::int64_t> ended;
    /// Called at each use of the notification centre.
    std::function<void()> onUse = [] {};

private:
    NotificationCenter m_center;
};

} // namespace orvane
