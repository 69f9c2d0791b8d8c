// The content that was read from the platform's pasteboard, as the classification of a copy sees it. A value;
// any thread.
#pragma once

#include "Capabilities/ClipboardHistory/Capture/PasteboardReading.h"
#include "Platform/Pasteboard.h"

namespace orvane {

class SystemPasteboardReader : public PasteboardReading {
public:
    explicit SystemPasteboardReader(PasteboardContents contents) : m_contents(std::move(contents)) {}

    [[nodiscard]] QStringList types() const override { return m_contents.types; }
    [[nodiscard]] std::optional<QString> urlString() const override;
    [[nodiscard]] std::optional<QString> plainString() const override;
    /// A PNG is returned unchanged, whatever its bytes; only without one a TIFF is converted, which is slow.
    [[nodiscard]] std::optional<QByteArray> pngData() const override;
    [[nodiscard]] std::optional<QList<QUrl>> fileURLs() const override;

private:
    PasteboardContents m_contents;
};

} // namespace orvane
