/// @file
/// Cairo and Fontconfig keep their caches until the process ends, and Fontconfig refers to its own by offsets instead
/// of pointers, which the leak check does not follow and so reports. Programs of an address sanitizer build that draw
/// pictures link this file; it gives the caches back before the check.
#include <cairo.h>
#include <fontconfig/fontconfig.h>

namespace {

__attribute__((destructor)) void releaseCaches() {
    cairo_debug_reset_static_data();
    FcFini();
}

}  // namespace
