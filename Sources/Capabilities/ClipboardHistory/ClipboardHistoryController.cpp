#include "Capabilities/ClipboardHistory/ClipboardHistoryController.h"

#include "Capabilities/ClipboardHistory/Archive/PlainFile.h"
#include "Capabilities/ClipboardHistory/Capture/AnyPicture.h"
#include "Capabilities/ClipboardHistory/Capture/Picture.h"
#include "Capabilities/ClipboardHistory/Panel/PastebackEngine.h"
#include "Platform/Pasteboard.h"
#include "Platform/Permissions.h"
#include "Platform/Platform.h"
#include "Platform/Workspace.h"

#include <utility>

namespace orvane {

ClipboardStore ClipboardHistoryController::Loading::result() const
{
    ClipboardStore store{.maxItems = maxItems, .items = *items};
    for (const Change& change : changes)
        change(store);
    return store;
}

std::shared_ptr<ClipboardHistoryController>
ClipboardHistoryController::make(std::shared_ptr<ClipboardHistorySettings> settings,
                                 const QString& supportDirectory, Logger logger)
{
    std::shared_ptr<ClipboardHistoryController> controller(
        new ClipboardHistoryController(std::move(settings), supportDirectory, std::move(logger)));
    controller->wirePanel();
    return controller;
}

ClipboardHistoryController::ClipboardHistoryController(std::shared_ptr<ClipboardHistorySettings> settings,
                                                       const QString& supportDirectory, Logger logger)
    : m_settings(std::move(settings)),
      m_archive{supportDirectory},
      m_log(std::move(logger)),
      m_store{.maxItems = m_settings->maxItems.get()},
      m_archiveQueue(std::make_shared<ArchiveQueue>(m_archive))
{
}

void ClipboardHistoryController::wirePanel()
{
    const std::weak_ptr<ClipboardHistoryController> weak = weak_from_this();
    const auto calling = [&weak](void (ClipboardHistoryController::*operation)(const ClipItem&)) {
        return [weak, operation](const ClipItem& item) {
            if (const auto self = weak.lock())
                ((*self).*operation)(ClipItem(item)); // the item may be the model's own, which changes
                                                      // meanwhile
        };
    };
    m_panel.model.onSelect = calling(&ClipboardHistoryController::select);
    m_panel.model.onDelete = calling(&ClipboardHistoryController::deleteItem);
    m_panel.model.onTogglePin = calling(&ClipboardHistoryController::togglePin);
    // Another thread may only look whether the controller exists: if it held the last reference, it would end
    // the controller there.
    m_panel.model.imageProvider = [weak, archive = m_archive](const QString& name) -> std::optional<QImage> {
        const auto path = archive.imagePath(name);
        const auto content = path && !weak.expired() ? PlainFile::content(*path) : std::nullopt;
        const auto png = content ? AnyPicture::asPng(*content) : std::nullopt;
        return png ? Picture::image(*png) : std::nullopt;
    };
}

void ClipboardHistoryController::loadHistory()
{
    m_isListKnown = true;
    if (!m_settings->persist.get()) {
        showItems();
        return;
    }
    const auto loading = std::make_shared<Loading>();
    loading->maxItems = m_settings->maxItems.get();
    loading->items = m_archiveQueue->load([weak = weak_from_this(), loading = std::weak_ptr(loading)] {
        if (const auto self = weak.lock())
            self->finishLoading(loading);
    });
    m_loading = loading;
}

void ClipboardHistoryController::finishLoading(const std::weak_ptr<Loading>& loading)
{
    if (!m_loading || loading.lock() != m_loading)
        return;
    m_store = m_loading->result();
    m_loading.reset();
    showItems();
}

void ClipboardHistoryController::apply(Change change)
{
    change(m_store);
    if (m_loading)
        m_loading->changes.push_back(std::move(change));
}

void ClipboardHistoryController::applySaveAndShow(Change change)
{
    apply(std::move(change));
    saveHistory();
    showItems();
}

void ClipboardHistoryController::saveHistory()
{
    if (!m_settings->persist.get())
        return;
    if (m_loading) {
        // The present list lacks the entries of the one that is still being read; the file must not.
        m_archiveQueue->save([loading = *m_loading] { return loading.result().items; });
    } else {
        m_archiveQueue->save([items = m_store.items] { return items; });
    }
}

void ClipboardHistoryController::showItems()
{
    m_panel.model.items.set(m_store.items);
}

void ClipboardHistoryController::clearHistory()
{
    endCaptures();
    // The feature may have been off since the start: its pins are on the disk alone.
    if (!m_isListKnown)
        loadHistory();
    applySaveAndShow([](ClipboardStore& store) { store.clearUnpinned(); });
}

void ClipboardHistoryController::skipPresentContent()
{
    m_lastChangeCount = platform().generalPasteboard.changeCount();
}

void ClipboardHistoryController::checkPasteboard()
{
    const int changeCount = platform().generalPasteboard.changeCount();
    if (changeCount == m_lastChangeCount)
        return;
    m_lastChangeCount = changeCount;
    m_captures.push_back(
        ClipboardCapture::begin(m_settings, m_archiveQueue, changeCount, [weak = weak_from_this()] {
            if (const auto self = weak.lock())
                self->takeCaptures();
        }));
}

/// Takes the captures in the order of the copies: a picture takes longer than a text that was copied after
/// it.
void ClipboardHistoryController::takeCaptures()
{
    while (!m_captures.empty() && m_captures.front()->isComplete()) {
        const std::shared_ptr<ClipboardCapture> capture = std::move(m_captures.front());
        m_captures.pop_front();
        if (!capture->item())
            continue;
        applySaveAndShow(
            [item = *capture->item(), maxItems = m_settings->maxItems.get()](ClipboardStore& store) {
                store.maxItems = maxItems;
                store.insert(item);
            });
        capture->keepImage();
    }
}

void ClipboardHistoryController::endCaptures()
{
    m_captures.clear();
}

void ClipboardHistoryController::suspend()
{
    endCaptures();
    if (m_isListKnown)
        saveHistory();
    m_panel.hide();
}

Task<> ClipboardHistoryController::purge()
{
    endCaptures();
    co_await m_archiveQueue->purge();
}

void ClipboardHistoryController::togglePanel()
{
    if (m_panel.isVisible()) {
        m_panel.hide();
        return;
    }
    m_previousApp = platform().sharedWorkspace.frontmostApplication();
    showItems();
    m_panel.show();
}

/// A picture is read from the disk first; of several that are chosen meanwhile the last one counts.
void ClipboardHistoryController::select(const ClipItem& item)
{
    const unsigned selection = ++m_selections;
    const auto path = item.kind == ClipKind::image && item.imageFileName
                          ? m_archive.imagePath(*item.imageFileName)
                          : std::nullopt;
    if (!path)
        return putBack(item, std::nullopt);
    putBackImage(weak_from_this(), item, *path, selection);
}

UnownedTask ClipboardHistoryController::putBackImage(std::weak_ptr<ClipboardHistoryController> weak,
                                                     ClipItem item, QString path, unsigned selection)
{
    auto read = [path] { return PastebackEngine::image(path); };
    const auto image = co_await onPool(read);
    const auto self = weak.lock();
    if (self && self->m_selections == selection)
        self->putBack(item, image);
}

void ClipboardHistoryController::putBack(const ClipItem& item, const std::optional<PasteboardImage>& image)
{
    // The watcher must not take it for a new copy.
    m_placedChangeCount = PastebackEngine::place(item, image);
    m_lastChangeCount = m_placedChangeCount;
    m_panel.hide();
    if (m_settings->autoPaste.get() && platform().permissions.axIsProcessTrusted())
        returnAndPaste();
}

void ClipboardHistoryController::returnAndPaste()
{
    if (m_previousApp)
        platform().sharedWorkspace.activateApplication(*m_previousApp);
    // All take the same steps, so they become ready in their order.
    m_pastes.push_back(std::make_unique<PendingPaste>([this] {
        const std::unique_ptr<PendingPaste> paste = std::move(m_pastes.front());
        m_pastes.pop_front();
        // If another program has copied something meanwhile, that must not be pasted instead of the entry.
        if (platform().generalPasteboard.changeCount() == m_placedChangeCount)
            PastebackEngine::synthesizePaste();
    }));
}

void ClipboardHistoryController::deleteItem(const ClipItem& item)
{
    applySaveAndShow([id = item.id](ClipboardStore& store) { store.remove(id); });
}

void ClipboardHistoryController::togglePin(const ClipItem& item)
{
    applySaveAndShow([id = item.id](ClipboardStore& store) { store.togglePin(id); });
}

} // namespace orvane
