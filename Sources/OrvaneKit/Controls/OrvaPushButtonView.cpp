#include "OrvaneKit/Controls/OrvaPushButtonView.h"

namespace orvane {

OrvaPushButtonView::OrvaPushButtonView(std::function<void()> action)
{
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(this, &QPushButton::clicked, this, [action = std::move(action)] {
        // A copy is called, because the action may end this view.
        if (const auto own = action)
            own();
    });
}

void OrvaPushButtonView::setTitle(const QString& title)
{
    m_title = title;
    setText(escapedMnemonics(title));
    setAccessibleName(title);
    updateGeometry();
    update();
}

} // namespace orvane
