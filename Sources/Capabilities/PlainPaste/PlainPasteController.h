// Replaces the content of the general pasteboard by its plain text, and pastes it. Main thread.
//
// Other programs are asked, and large documents decoded, without waiting. Presses keep their order: each runs
// whole before the next one begins.
#pragma once

#include "Capabilities/PlainPaste/PlainPasteSettings.h"
#include "OrvaneCore/Base/Log.h"
#include "OrvaneCore/Base/Pool.h"
#include "Platform/Pasteboard.h"

#include <memory>

namespace orvane {

class PlainPasteController : public std::enable_shared_from_this<PlainPasteController> {
public:
    static std::shared_ptr<PlainPasteController> make(std::shared_ptr<PlainPasteSettings> settings,
                                                      Logger logger);

    [[nodiscard]] const std::shared_ptr<PlainPasteSettings>& settings() const { return m_settings; }

    /// When there is no text the pasteboard stays as it is, and presses that wait are dropped: their effect
    /// would come seconds later.
    void pasteAsPlainText();

private:
    PlainPasteController(std::shared_ptr<PlainPasteSettings> settings, Logger logger)
        : m_settings(std::move(settings)), m_log(std::move(logger))
    {
    }

    void begin();
    void takeString(std::optional<PasteboardContents> contents);
    void decode(std::optional<PasteboardContents> contents);
    static UnownedTask finishDecoded(std::weak_ptr<PlainPasteController> weak, PasteboardContents contents);
    void finish(const std::optional<QString>& text);
    bool write(const QString& text);
    void pasteWhenOthersGetIt();
    void synthesizePaste();
    void endPress();

    std::shared_ptr<PlainPasteSettings> m_settings;
    Logger m_log;
    std::unique_ptr<PasteboardRead> m_read;
    int m_copy = 0;    // the change count when the press under way began
    int m_presses = 0; // the one under way, and those that wait
};

} // namespace orvane
