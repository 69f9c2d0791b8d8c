// orvane-worker: opens files that other people made, so that the program needn't. Started by the program,
// with one end of a socket pair; ends when it has nothing to do.
#include "Platform/Protocols/WorkerProtocol.h"
#include "Worker/Confinement.h"
#include "Worker/RequestLoop.h"

#include <chrono>
#include <cstdlib>
#include <string>

#include <gmodule.h>
#include <unistd.h>
#include <vips/vips8>

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::seconds idleLimit = 30s;
/// The program gives up before; this is for a worker whose program has died.
constexpr std::chrono::seconds requestLimit = 45s;

/// Loads the library without its modules but the one for HEIC: no request reaches the others, which take time
/// and bring many libraries.
bool startLibrary(const char* name)
{
    ::setenv("VIPSHOME", "/nonexistent", 1); // here it looks for its modules
    if (VIPS_INIT(name) != 0)
        return false;
    const std::string module = std::string(ORVANE_VIPS_LIBRARIES) + "/vips-modules-" +
                               std::to_string(::vips_version(0)) + '.' + std::to_string(::vips_version(1)) +
                               "/vips-heif.so";
    // Where there is none, the library itself has the format, or a request for it fails.
    if (GModule* const heif = ::g_module_open(module.c_str(), G_MODULE_BIND_LAZY))
        ::g_module_make_resident(heif);
    return true;
}

/// A library loads some of its parts at their first use, which is too late afterwards.
void warmUp()
{
    using vips::VImage;
    const VImage dot = VImage::black(2, 2, VImage::option()->set("bands", 4))
                           .copy(VImage::option()->set("interpretation", VIPS_INTERPRETATION_sRGB));
    for (const char* suffix : {".jpg", ".png", ".heic", ".tif"}) {
        std::size_t size = 0;
        void* bytes = nullptr;
        try {
            dot.write_to_buffer(suffix, &bytes, &size);
            VImage::new_from_buffer(bytes, size, "").thumbnail_image(1).avg();
        } catch (const vips::VError&) {
            ::vips_error_clear(); // a format that is missing here fails when it is asked for
        }
        ::g_free(bytes);
    }
}

} // namespace

int main(int, char** argv)
{
    namespace Confinement = orvane::Confinement;
    constexpr int socket = orvane::WorkerProtocol::workerDescriptor;
    Confinement::limitResources(socket + 1);
    if (!startLibrary(argv[0]))
        return EXIT_FAILURE;
    ::vips_cache_set_max(0);
    warmUp();
    if (!Confinement::enter())
        return EXIT_FAILURE;
    orvane::RequestLoop::run(socket, idleLimit, requestLimit);
    ::_exit(EXIT_SUCCESS); // nothing is left to be written, and the libraries' farewells aren't needed
}
