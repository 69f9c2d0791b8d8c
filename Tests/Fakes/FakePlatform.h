// A whole platform of fakes, installed for as long as the object lives.
#pragma once

#include "Fakes/FakeAccessibility.h"
#include "Fakes/FakeApplication.h"
#include "Fakes/FakeClock.h"
#include "Fakes/FakeDefaultsStore.h"
#include "Fakes/FakeDesktopPicture.h"
#include "Fakes/FakeEventMonitors.h"
#include "Fakes/FakeEventTaps.h"
#include "Fakes/FakeHotKeys.h"
#include "Fakes/FakeHttp.h"
#include "Fakes/FakeInputSources.h"
#include "Fakes/FakeLogSink.h"
#include "Fakes/FakeLoginItem.h"
#include "Fakes/FakeOverlays.h"
#include "Fakes/FakePanels.h"
#include "Fakes/FakePasteboard.h"
#include "Fakes/FakePermissions.h"
#include "Fakes/FakePictures.h"
#include "Fakes/FakePowerAssertions.h"
#include "Fakes/FakeRunLoop.h"
#include "Fakes/FakeScreenCapture.h"
#include "Fakes/FakeScreens.h"
#include "Fakes/FakeSound.h"
#include "Fakes/FakeStatusBar.h"
#include "Fakes/FakeTextRecognition.h"
#include "Fakes/FakeThumbnails.h"
#include "Fakes/FakeWindowDrags.h"
#include "Fakes/FakeWorkspace.h"
#include "Platform/Bundle.h"
#include "Platform/FileManager.h"
#include "Platform/NotificationCenter.h"
#include "Platform/Platform.h"

namespace orvane {

class FakeBundle : public Bundle {
public:
    [[nodiscard]] std::optional<QString> identifier() const override { return bundleIdentifier; }
    [[nodiscard]] QVariant infoValue(const QString& key) const override { return info.value(key); }
    [[nodiscard]] QString path() const override { return bundlePath; }

    std::optional<QString> bundleIdentifier = QStringLiteral("net.lindenrow.orvane");
    QVariantMap info{{QStringLiteral("CFBundleShortVersionString"), QStringLiteral("0.1.0")}};
    QString bundlePath = QStringLiteral("/fake/bin/orvane");
};

class FakeFileManager : public FileManager {
public:
    [[nodiscard]] QStringList applicationSupportDirectories() const override
    {
        ++reads;
        return supportDirectories;
    }

    [[nodiscard]] std::optional<QString> picturesDirectory() const override { return pictures; }

    mutable int reads = 0;
    QStringList supportDirectories{QStringLiteral("/fake/support")};
    std::optional<QString> pictures = QStringLiteral("/fake/Pictures");
};

class FakePlatform {
public:
    FakePlatform();
    /// Drops the queued tasks while the platform still exists, so that their captures can end.
    ~FakePlatform();

    FakeAccessibility accessibility;
    FakeApplication application;
    FakeBundle bundle;
    FakeClock clock;
    FakeDesktopPicture desktopPicture;
    FakeEventMonitors eventMonitors;
    FakeEventTaps eventTaps;
    FakeFileManager fileManager;
    FakeHotKeys hotKeys;
    FakeLogSink log;
    FakeLoginItem loginItem;
    FakePictures pictures;
    FakePowerAssertions powerAssertions;
    FakeRunLoop runLoop{clock};
    FakeHttp http{runLoop};
    FakePasteboard generalPasteboard{runLoop};
    FakeSound sound;
    FakeDefaultsStore defaults;
    FakeWorkspace workspace;
    NotificationCenter notificationCenter;
    FakeInputSources inputSources{notificationCenter};
    FakeOverlays overlays{runLoop};
    FakePanels panels{notificationCenter};
    FakePermissions permissions{&notificationCenter};
    FakeStatusBar statusBar{&notificationCenter};
    FakeTextRecognition textRecognition;
    FakeThumbnails thumbnails{pictures};
    FakeScreens screens{notificationCenter};
    FakeScreenCapture screenCapture{screens, runLoop};
    FakeWindowDrags windowDrags{accessibility, eventMonitors};

private:
    Platform m_platform;
    PlatformScope m_scope;
};

} // namespace orvane
