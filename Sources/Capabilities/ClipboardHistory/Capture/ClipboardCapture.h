// One copy on its way from the pasteboard into the history. Main thread. When this object ends before the
// copy is complete, the copy is dropped and nothing of it stays on the disk.
//
// A program that hangs, a large picture or a slow disk delays only this copy. A copy that is marked as
// private isn't asked for its data.
#pragma once

#include "Capabilities/ClipboardHistory/Archive/ArchiveQueue.h"
#include "Capabilities/ClipboardHistory/Capture/PasteboardSnapshot.h"
#include "Capabilities/ClipboardHistory/ClipboardHistorySettings.h"
#include "Capabilities/ClipboardHistory/Store/ClipItem.h"
#include "OrvaneCore/Base/Pool.h"
#include "Platform/Pasteboard.h"

#include <functional>
#include <memory>
#include <optional>

namespace orvane {

class ClipboardCapture : public std::enable_shared_from_this<ClipboardCapture> {
public:
    /// `changeCount` is that of the copy: newer content isn't taken for it. `completion` is called once, in a
    /// later turn of the run loop, and may end the capture.
    static std::shared_ptr<ClipboardCapture> begin(std::shared_ptr<const ClipboardHistorySettings> settings,
                                                   std::shared_ptr<ArchiveQueue> archive, int changeCount,
                                                   std::function<void()> completion);

    [[nodiscard]] bool isComplete() const { return m_isComplete; }
    /// The finished entry; nothing for a copy that is ignored.
    [[nodiscard]] const std::optional<ClipItem>& item() const { return m_item; }
    /// To be called when the item is in the list, so that its picture stays.
    void keepImage();

private:
    ClipboardCapture(std::shared_ptr<const ClipboardHistorySettings> settings,
                     std::shared_ptr<ArchiveQueue> archive, int changeCount,
                     std::function<void()> completion);

    void readTypes();
    void takeTypes(std::optional<PasteboardContents> contents);
    [[nodiscard]] QStringList wantedTypes(const QStringList& present) const;
    void takeData(std::optional<PasteboardContents> contents);
    [[nodiscard]] bool lacksItsPng(const PasteboardContents& contents) const;
    void classify(PasteboardContents contents);
    static UnownedTask makeItemOf(std::weak_ptr<ClipboardCapture> weak,
                                  std::function<std::optional<CapturedContent>()> classify);
    void makeItem(std::optional<CapturedContent> content);
    static UnownedTask keepWritten(std::weak_ptr<ClipboardCapture> weak,
                                   std::shared_ptr<ArchiveQueue> archive, QByteArray png);
    void finishImage(std::unique_ptr<UnlistedImage> image);
    void finish(std::optional<ClipItem> item);

    const std::shared_ptr<const ClipboardHistorySettings> m_settings;
    const std::shared_ptr<ArchiveQueue> m_archive;
    const int m_changeCount;
    const std::optional<QString> m_sourceApp;
    const ClipItem::Date m_date;
    std::function<void()> m_completion;
    std::unique_ptr<PasteboardRead> m_read;
    std::unique_ptr<UnlistedImage> m_image;
    std::optional<ClipItem> m_item;
    bool m_isComplete = false;
};

} // namespace orvane
