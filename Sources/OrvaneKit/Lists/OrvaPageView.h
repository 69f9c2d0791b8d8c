// The frame of a page: its scrolling, its width, and the dimming of its content.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QScrollArea>

class QVBoxLayout;

namespace orvane {

/// Disabled content, drawn at `Orva::disabledDim`. A veil in the page's ground colour covers it, which gives
/// the same colours as a translucent layer and keeps text sharp.
class OrvaDimmedView final : public QWidget {
public:
    OrvaDimmedView(const AnyView& content, const Live<bool>& enabled);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QWidget* m_content;
    QWidget* m_veil = nullptr;
    Cancellables m_cancellables;
};

class OrvaPageView final : public QScrollArea {
public:
    OrvaPageView(const Live<bool>& contentEnabled, const AnyView& header, const AnyView& banner,
                 const AnyView& content);
};

} // namespace orvane
