// The texts of the requests to servers, for translation.
#pragma once

#include <QCoreApplication>

namespace orvane {

struct HttpText {
    Q_DECLARE_TR_FUNCTIONS(HttpText)
};

} // namespace orvane
