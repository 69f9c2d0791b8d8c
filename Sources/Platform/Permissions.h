// The permissions that the system gives this program, and requests for more. An ability can come late, such
// as a file manager that starts after this program; the notification tells of it.
//
// Main thread, and quick: answers are the last known ones. Only determinePermissionToAutomateTarget with
// `prompt` may block, for as long as a user thinks, and may be called on any thread.
#pragma once

#include <QString>

namespace orvane {

class Permissions {
public:
    using OSStatus = int;
    static constexpr OSStatus noErr = 0;
    static constexpr OSStatus errAEEventNotPermitted = -1743;
    static constexpr OSStatus errAEEventWouldRequireUserConsent = -1744;
    static constexpr OSStatus procNotFound = -600; // the target isn't there

    enum class Prompt { no, yes };

    enum class Right { accessibility, listenEvent, screenCapture, automation };
    struct Denial {
        /// A sentence for a person, in plain words. Empty where nothing is denied, and where the system has
        /// its own place to explain and to give it.
        QString reason = {};
        /// False where a request can't change the answer.
        bool canBeRequested = true;
        /// True where the system gives a new permission only to a program that starts anew.
        bool needsRestart = true;
    };

    virtual ~Permissions() = default;

    /// Posted on the default notification centre when an answer has changed that nobody asked to be changed.
    static QString didChangeNotification()
    {
        return QStringLiteral("net.lindenrow.orvane.permissionsDidChange");
    }

    /// True if windows of other programs can be read and moved.
    virtual bool axIsProcessTrusted() = 0;
    virtual void axIsProcessTrustedWithPrompt() = 0;

    /// True if input meant for other programs can be seen and changed.
    virtual bool preflightListenEventAccess() = 0;
    virtual void requestListenEventAccess() = 0;

    /// True if the screen's content can be read.
    virtual bool preflightScreenCaptureAccess() = 0;
    virtual void requestScreenCaptureAccess() = 0;

    /// Tells whether the program named by a bundle identifier may be automated, by any event.
    virtual OSStatus determinePermissionToAutomateTarget(const QString& bundleIdentifier, Prompt prompt) = 0;

    /// Tells why the last answer for a right was a denial. `automation` means that of the file manager.
    [[nodiscard]] virtual Denial denial(Right right) = 0;
};

} // namespace orvane
