#include "PlatformLinux/Defaults/SavingAtExit.h"

#include "PlatformLinux/Defaults/JsonDefaultsStore.h"

#include <cstdlib>
#include <utility>

namespace orvane {

namespace {

JsonDefaultsStore* openStore = nullptr;

void save()
{
    if (JsonDefaultsStore* store = std::exchange(openStore, nullptr))
        store->finish();
}

} // namespace

SavingAtExit::SavingAtExit(JsonDefaultsStore& store)
{
    openStore = &store;
    static const bool isRegistered = std::atexit(&save) == 0;
    static_cast<void>(isRegistered);
}

SavingAtExit::~SavingAtExit()
{
    openStore = nullptr;
}

} // namespace orvane
