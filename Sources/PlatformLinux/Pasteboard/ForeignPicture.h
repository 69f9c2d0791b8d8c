// A picture that another program offers in another format than PNG.
#pragma once

#include "Platform/Pictures.h"

#include <QByteArray>

namespace orvane {

struct ForeignPicture {
    QByteArray bytes;
    Pictures::Foreign format{};
};

} // namespace orvane
