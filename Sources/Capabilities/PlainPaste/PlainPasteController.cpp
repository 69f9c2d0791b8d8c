#include "Capabilities/PlainPaste/PlainPasteController.h"

#include "Capabilities/PlainPaste/Text/PlainText.h"
#include "OrvaneCore/Input/SyntheticEvent.h"
#include "Platform/Permissions.h"
#include "Platform/Platform.h"

#include <algorithm>

namespace orvane {

namespace {

constexpr std::int64_t vKey = 9;

} // namespace

std::shared_ptr<PlainPasteController> PlainPasteController::make(std::shared_ptr<PlainPasteSettings> settings,
                                                                 Logger logger)
{
    return std::shared_ptr<PlainPasteController>(
        new PlainPasteController(std::move(settings), std::move(logger)));
}

void PlainPasteController::pasteAsPlainText()
{
    if (m_presses++ == 0)
        begin();
}

/// Formatted documents can be large, so they are only asked for when there is no plain text beside them.
void PlainPasteController::begin()
{
    m_copy = platform().generalPasteboard.changeCount();
    m_read = platform().generalPasteboard.read({pasteboardType::string},
                                               [this](auto contents) { takeString(std::move(contents)); });
}

void PlainPasteController::takeString(std::optional<PasteboardContents> contents)
{
    if (!contents)
        return finish(std::nullopt);
    if (const auto string = contents->stringForType(pasteboardType::string))
        return finish(string);
    if (!contents->types.contains(pasteboardType::rtf) && !contents->types.contains(pasteboardType::html))
        return finish(std::nullopt);
    // Another program may have copied in between, so this asks for the plain text again.
    m_read = platform().generalPasteboard.read(PlainText::types(),
                                               [this](auto formatted) { decode(std::move(formatted)); });
}

/// What was read belongs to the press, even if another program copies before the decoder has finished.
void PlainPasteController::decode(std::optional<PasteboardContents> contents)
{
    if (contents)
        finishDecoded(weak_from_this(), *std::move(contents));
    else
        finish(std::nullopt);
}

UnownedTask PlainPasteController::finishDecoded(std::weak_ptr<PlainPasteController> weak,
                                                PasteboardContents contents)
{
    auto decode = [contents = std::move(contents)] { return PlainText::from(contents); };
    const auto text = co_await onPool(decode);
    if (const auto self = weak.lock())
        self->finish(text);
}

void PlainPasteController::finish(const std::optional<QString>& text)
{
    m_read.reset();
    if (!text) {
        // The presses that wait were about the same copy, unless there is another one by now.
        const bool isOfAnother = platform().generalPasteboard.changeCount() != m_copy;
        m_presses = isOfAnother ? std::min(m_presses, 2) : 1;
        endPress();
        return;
    }
    if (write(*text) && m_settings->autoPaste.get() && platform().permissions.axIsProcessTrusted())
        pasteWhenOthersGetIt();
    else
        endPress();
}

/// Returns false when another program has copied just now; its copy must not be pasted.
bool PlainPasteController::write(const QString& text)
{
    Pasteboard& pasteboard = platform().generalPasteboard;
    pasteboard.clearContents();
    return pasteboard.setString(text, pasteboardType::string);
}

/// A paste that comes before the copy would take the formatted text that was there before.
void PlainPasteController::pasteWhenOthersGetIt()
{
    m_read = platform().generalPasteboard.read({}, [this](const auto&) {
        m_read.reset();
        synthesizePaste();
        endPress();
    });
}

void PlainPasteController::endPress()
{
    if (--m_presses > 0)
        begin();
}

void PlainPasteController::synthesizePaste()
{
    SyntheticEvent::postKey(vKey, eventFlag::command);
}

} // namespace orvane
