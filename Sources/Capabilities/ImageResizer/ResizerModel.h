// The dropped files and the batch that resizes them. Main thread. Owned by a shared pointer.
#pragma once

#include "Capabilities/ImageResizer/ImageResizerSettings.h"
#include "OrvaneCore/Base/Pool.h"

#include <QUrl>

namespace orvane {

class ResizerModel : public std::enable_shared_from_this<ResizerModel> {
public:
    struct Progress {
        int done = 0;
        int total = 0;
        friend bool operator==(const Progress&, const Progress&) = default;
    };

    explicit ResizerModel(std::shared_ptr<ImageResizerSettings> settings) : m_settings(std::move(settings)) {}
    ~ResizerModel();
    ResizerModel(const ResizerModel&) = delete;
    ResizerModel& operator=(const ResizerModel&) = delete;

    [[nodiscard]] const std::shared_ptr<ImageResizerSettings>& settings() const { return m_settings; }

    /// Keeps the local files with the extension of a picture that aren't there yet.
    void add(const QList<QUrl>& urls);
    void remove(const QUrl& url);
    void clear();
    /// Resizes the files that are there now, two at a time. Does nothing while a batch runs.
    void resizeAll();
    /// Ends the batch: what is done stays.
    void cancel();

    /// In order of arrival, without repeats.
    Observable<QList<QUrl>> files;
    Observable<std::optional<QString>> status;
    Observable<Progress> progress;
    /// Set after `progress` and `status`.
    Observable<bool> isWorking{false};

private:
    /// While the platform works on one file, the other one is opened, or its copy waits for the disk.
    static constexpr int lanes = 2;
    struct Batch;

    /// Goes through the batch beside the other lanes: each takes the next file that none has taken.
    static UnownedTask work(std::weak_ptr<ResizerModel> weak, std::shared_ptr<Batch> batch);
    void finish(int resized, int total);

    std::shared_ptr<ImageResizerSettings> m_settings;
    std::stop_source m_stop;
};

} // namespace orvane
