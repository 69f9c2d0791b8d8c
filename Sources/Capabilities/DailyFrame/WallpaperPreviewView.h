// The present picture, small: it fills the width of the pane. Made by the worker from the file, and only
// while the view is shown.
#pragma once

#include "Capabilities/DailyFrame/DailyFrameController.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QImage>
#include <QPointer>
#include <QProgressBar>

#include <stop_token>

namespace orvane {

struct WallpaperPreview {
    std::shared_ptr<DailyFrameController> controller;
};
QWidget* makeOrvaWidget(const WallpaperPreview& preview);

class WallpaperPreviewView final : public OrvaThemed<QWidget> {
public:
    explicit WallpaperPreviewView(std::shared_ptr<DailyFrameController> controller);
    ~WallpaperPreviewView() override;
    WallpaperPreviewView(const WallpaperPreviewView&) = delete;
    WallpaperPreviewView& operator=(const WallpaperPreviewView&) = delete;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;

    [[nodiscard]] const QImage& image() const { return m_image; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void fileChanged();
    void loadIfNeeded();
    static UnownedTask load(QPointer<WallpaperPreviewView> view, QString path, int side,
                            std::stop_token stop);
    void take(const QString& path, const QImage& image);

    std::shared_ptr<DailyFrameController> m_controller;
    QProgressBar m_progress{this};
    QImage m_image;
    /// The file that is shown or loaded.
    QString m_path;
    std::stop_source m_stop;
    Cancellables m_cancellables;
};

} // namespace orvane
