// The resizer's window: made on first need, hidden when it is closed, so that the list of files outlives it.
// Main thread.
#pragma once

#include "Capabilities/ImageResizer/ResizerModel.h"

class QWidget;

namespace orvane {

class ResizerWindowController {
public:
    explicit ResizerWindowController(std::shared_ptr<ImageResizerSettings> settings);
    ~ResizerWindowController();
    ResizerWindowController(const ResizerWindowController&) = delete;
    ResizerWindowController& operator=(const ResizerWindowController&) = delete;

    [[nodiscard]] const std::shared_ptr<ImageResizerSettings>& settings() const
    {
        return m_model->settings();
    }
    [[nodiscard]] const std::shared_ptr<ResizerModel>& model() const { return m_model; }

    /// Makes the window if there is none, brings it to the front and makes it active.
    void show();
    /// Returns the window, or null before the first show.
    [[nodiscard]] QWidget* window() const { return m_window.get(); }

private:
    void makeWindow();

    std::shared_ptr<ResizerModel> m_model;
    std::unique_ptr<QWidget> m_window;
};

} // namespace orvane
