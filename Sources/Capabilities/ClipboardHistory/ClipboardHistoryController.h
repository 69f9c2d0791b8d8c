// The clipboard history: captures copies into its list, keeps the list on the disk, shows it in its panel,
// and puts entries back. Main thread.
//
// Nothing here waits for another program or for the disk. Changes to the list while it is still being read
// count at once and are repeated on the list that arrives, as if it had been there.
#pragma once

#include "Capabilities/ClipboardHistory/Archive/ArchiveQueue.h"
#include "Capabilities/ClipboardHistory/Capture/ClipboardCapture.h"
#include "Capabilities/ClipboardHistory/ClipboardHistorySettings.h"
#include "Capabilities/ClipboardHistory/Panel/HistoryPanelController.h"
#include "Capabilities/ClipboardHistory/Panel/PendingPaste.h"
#include "Capabilities/ClipboardHistory/Store/ClipboardStore.h"
#include "OrvaneCore/Base/Log.h"
#include "OrvaneCore/Base/Pool.h"
#include "OrvaneCore/Base/Task.h"
#include "Platform/RunningApplication.h"

#include <deque>
#include <functional>
#include <memory>
#include <vector>

namespace orvane {

class ClipboardHistoryController : public std::enable_shared_from_this<ClipboardHistoryController> {
public:
    static std::shared_ptr<ClipboardHistoryController>
    make(std::shared_ptr<ClipboardHistorySettings> settings, const QString& supportDirectory, Logger logger);

    [[nodiscard]] const std::shared_ptr<ClipboardHistorySettings>& settings() const { return m_settings; }
    [[nodiscard]] const ClipboardStore& store() const { return m_store; }
    HistoryPanelController& panel() { return m_panel; }
    [[nodiscard]] const HistoryPanelController& panel() const { return m_panel; }

    /// Asks for the list on the disk, which replaces the one in memory when it arrives. Without `persist` the
    /// one in memory stays.
    void loadHistory();
    /// Removes what isn't pinned, and copies that are still on their way.
    void clearHistory();
    void togglePanel();

    /// Leaves out what is on the pasteboard now.
    void skipPresentContent();
    /// Captures a copy made since the last look. Costs the reading of an integer when there was none.
    void checkPasteboard();
    /// Drops the copies that are on their way.
    void endCaptures();
    /// Hands the list to the disk if it is to be kept.
    void saveHistory();
    /// To be called when the capability is off: nothing more is captured or shown.
    void suspend();
    /// Removes everything from the disk for good. Completes when it has happened.
    Task<> purge();

private:
    using Change = std::function<void(ClipboardStore&)>;

    /// The list that is still being read, and the changes made meanwhile.
    struct Loading {
        std::shared_ptr<const QList<ClipItem>> items;
        int maxItems = 0;
        std::vector<Change> changes = {};

        [[nodiscard]] ClipboardStore result() const;
    };

    ClipboardHistoryController(std::shared_ptr<ClipboardHistorySettings> settings,
                               const QString& supportDirectory, Logger logger);
    void wirePanel();
    void finishLoading(const std::weak_ptr<Loading>& loading);
    void apply(Change change);
    void applySaveAndShow(Change change);
    void showItems();
    void takeCaptures();
    void select(const ClipItem& item);
    static UnownedTask putBackImage(std::weak_ptr<ClipboardHistoryController> weak, ClipItem item,
                                    QString path, unsigned selection);
    void putBack(const ClipItem& item, const std::optional<PasteboardImage>& image);
    void returnAndPaste();
    void deleteItem(const ClipItem& item);
    void togglePin(const ClipItem& item);

    std::shared_ptr<ClipboardHistorySettings> m_settings;
    const HistoryArchive m_archive;
    Logger m_log;
    HistoryPanelController m_panel;
    ClipboardStore m_store;
    int m_lastChangeCount = 0;
    int m_placedChangeCount = 0; // of the entry that was chosen last
    std::optional<RunningApplication> m_previousApp;

    std::shared_ptr<ArchiveQueue> m_archiveQueue;
    std::shared_ptr<Loading> m_loading;                       // null once the list is there
    std::deque<std::shared_ptr<ClipboardCapture>> m_captures; // in the order of the copies
    bool m_isListKnown = false;                               // the disk was asked for it, or needn't be
    unsigned m_selections = 0;
    std::deque<std::unique_ptr<PendingPaste>> m_pastes;
};

} // namespace orvane
