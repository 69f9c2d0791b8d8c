// What the kit's buttons have in common: a fixed size, a title, an action, and how the pointer is on them.
#pragma once

#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QPushButton>
#include <QString>

#include <functional>

namespace orvane {

class OrvaPushButtonView : public OrvaControl<QPushButton> {
public:
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    /// The action may end the view.
    explicit OrvaPushButtonView(std::function<void()> action);

    /// Shown as it is, and the accessible name.
    void setTitle(const QString& title);
    const QString& title() const { return m_title; }

private:
    QString m_title;
};

} // namespace orvane
