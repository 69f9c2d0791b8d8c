// The frame of a page: what scrolls, how wide it is, and how its content is dimmed.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QScrollArea>

class QVBoxLayout;

namespace orvane {

/// Disabled content, drawn at `Orva::disabledDim`. It is covered by a veil of the page's ground, which gives
/// the same colours as a translucent layer and leaves text as sharp as it was.
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
