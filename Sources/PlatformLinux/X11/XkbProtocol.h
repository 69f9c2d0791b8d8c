// libxcb's keyboard protocol, whose header uses a keyword of C++ as a name.
#pragma once

#define explicit explicitComponents
#include <xcb/xkb.h>
#undef explicit
