#include "Platform/Platform.h"

#include <QtGlobal>

namespace orvane {

namespace {
Platform* installed = nullptr;
}

Platform& platform()
{
    if (!installed)
        qFatal("No platform is installed: create a PlatformScope first");
    return *installed;
}

bool isPlatformInstalled()
{
    return installed != nullptr;
}

PlatformScope::PlatformScope(Platform& platform) : m_previous(installed)
{
    installed = &platform;
}
PlatformScope::~PlatformScope()
{
    installed = m_previous;
}

} // namespace orvane
