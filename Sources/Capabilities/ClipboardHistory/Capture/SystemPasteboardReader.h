// What was read of the platform's pasteboard, as the classification of a copy sees it. A value; any thread.
#pragma once

#include "Capabilities/ClipboardHistory/Capture/PasteboardReading.h"
#include "Platform/Pasteboard.h"

namespace orvane {

class SystemPasteboardReader : public PasteboardReading {
public:
    explicit SystemPasteboardReader(PasteboardContents contents) : m_contents(std::move(contents)) {}

    QStringList types() const override { return m_contents.types; }
    std::optional<QString> urlString() const override;
    std::optional<QString> plainString() const override;
    /// A PNG as it stands, whatever its bytes; only without one a TIFF is converted, which takes its time.
    std::optional<QByteArray> pngData() const override;
    std::optional<QList<QUrl>> fileURLs() const override;

private:
    PasteboardContents m_contents;
};

} // namespace orvane
