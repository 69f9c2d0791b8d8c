// The system that the program runs on: an aggregate of its services, installed once for the process.
//
// main installs the real one; a test installs a fake one for a scope. Pure logic never asks for it.
#pragma once

namespace orvane {

class Accessibility;
class Application;
class Bundle;
class Clock;
class DefaultsStore;
class DesktopPicture;
class EventMonitors;
class EventTaps;
class FileManager;
class HotKeys;
class Http;
class InputSources;
class LoginItem;
class LogSink;
class NotificationCenter;
class Overlays;
class Panels;
class Pasteboard;
class Permissions;
class Pictures;
class PowerAssertions;
class RunLoop;
class ScreenCapture;
class Screens;
class Sound;
class StatusBar;
class TextRecognition;
class Thumbnails;
class WindowDrags;
class Workspace;

struct Platform {
    Accessibility& accessibility;
    Application& application;
    Bundle& mainBundle;
    Clock& clock;
    NotificationCenter& defaultNotificationCenter;
    DesktopPicture& desktopPicture;
    EventMonitors& eventMonitors;
    EventTaps& eventTaps;
    FileManager& fileManager;
    Pasteboard& generalPasteboard;
    HotKeys& hotKeys;
    Http& http;
    InputSources& inputSources;
    LoginItem& loginItem;
    LogSink& log;
    Overlays& overlays;
    Panels& panels;
    Permissions& permissions;
    Pictures& pictures;
    PowerAssertions& powerAssertions;
    RunLoop& mainRunLoop;
    ScreenCapture& screenCapture;
    Screens& screens;
    Sound& sound;
    DefaultsStore& standardDefaults;
    StatusBar& systemStatusBar;
    TextRecognition& textRecognition;
    Thumbnails& thumbnails;
    WindowDrags& windowDrags;
    Workspace& sharedWorkspace;
};

/// The installed platform. Calling it with none installed ends the process with a message.
Platform& platform();
bool isPlatformInstalled();

/// Installs a platform for a scope; its end restores the one that was there before.
class PlatformScope {
public:
    explicit PlatformScope(Platform& platform);
    ~PlatformScope();
    PlatformScope(const PlatformScope&) = delete;
    PlatformScope& operator=(const PlatformScope&) = delete;

private:
    Platform* m_previous;
};

} // namespace orvane
