// Small pictures of the entries in view. Main thread; files are read and decoded on the pool, two at a time.
#pragma once

#include "Capabilities/ClipboardHistory/Panel/HistoryViewModel.h"
#include "OrvaneCore/Base/Pool.h"

#include <QHash>
#include <QImage>
#include <QSet>
#include <QStringList>

#include <functional>
#include <memory>

namespace orvane {

class HistoryThumbnails {
public:
    /// In points.
    static constexpr int side = 28;

    /// `arrived` is called for each picture, and for each that can't be had.
    HistoryThumbnails(const HistoryViewModel& model, std::function<void()> arrived);
    ~HistoryThumbnails();
    HistoryThumbnails(const HistoryThumbnails&) = delete;
    HistoryThumbnails& operator=(const HistoryThumbnails&) = delete;

    /// Sets the names of the pictures in view, and the pixels for each point. Pictures that aren't named are
    /// dropped, and those that are missing are fetched.
    void setWanted(const QStringList& names, double scale);
    /// Drops all pictures: the files may have changed.
    void clear();

    enum class State { loading, ready, missing };
    [[nodiscard]] State state(const QString& name) const;
    /// Returns a square picture of `side` points; null unless it is ready.
    [[nodiscard]] QImage image(const QString& name) const;

    /// Returns the middle square of a picture, scaled to this many pixels.
    static QImage squareOf(const QImage& image, int pixels);

private:
    struct Loader;

    struct Thumbnail {
        State state = State::loading;
        QImage image;
    };
    void fetchNext();
    static UnownedTask fetch(std::weak_ptr<HistoryThumbnails*> weak, QString name, int generation);
    void take(const QString& name, int generation, const QImage& image);

    const HistoryViewModel& m_model;
    std::function<void()> m_arrived;
    QHash<QString, Thumbnail> m_thumbnails; // of names in view alone
    /// Kept for the life of this object: a name stands for one picture, and a damaged one can cost much.
    QSet<QString> m_unreadable;
    QStringList m_waiting;
    double m_scale = 1;
    int m_fetching = 0;
    int m_generation = 0;                       // tells answers from before `clear`
    std::shared_ptr<HistoryThumbnails*> m_self; // for answers that come too late
};

} // namespace orvane
