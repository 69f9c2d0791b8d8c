// The base of the kit's buttons: a fixed size, a title and an action.
#pragma once

#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QPushButton>
#include <QString>

#include <functional>

namespace orvane {

class OrvaPushButtonView : public OrvaControl<QPushButton> {
public:
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    /// The action may end the view.
    explicit OrvaPushButtonView(std::function<void()> action);

    /// Sets the text that is shown and is also the accessible name.
    void setTitle(const QString& title);
    [[nodiscard]] const QString& title() const { return m_title; }

private:
    QString m_title;
};

} // namespace orvane
