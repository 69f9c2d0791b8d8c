// Two columns with a line between them that can be moved.
#pragma once

#include "Orvane/Navigation/OrvaNavigation.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QSplitter>

namespace orvane {

class OrvaSplitView final : public OrvaThemed<QSplitter> {
public:
    explicit OrvaSplitView(const OrvaSplit& split);

protected:
    QSplitterHandle* createHandle() override;
};

} // namespace orvane
