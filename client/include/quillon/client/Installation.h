/// @file
/// Where the applet and the software board lie.
#pragma once

#include <filesystem>
#include <optional>

#include "quillon/client/Export.h"

namespace quillon::client {

struct Installation {
    std::filesystem::path applet;     ///< the file libQuillon.so
    std::filesystem::path softBoard;  ///< the folder with the software board's stand-ins
};

/// Finds them from where this library lies, or the program that it is linked into, upwards: in a build folder as
/// lib/libQuillon.so and lib/softboard, in an installation as quillon/lib/libQuillon.so and quillon/lib/softboard
/// beside the libraries. Both may be moved as a whole. The last place to look is where the project was configured to be
/// installed. QUILLON_HOME in the environment names the folder above lib/ and comes first.
/// @return nothing if libQuillon.so is in none of these
QUILLON_CLIENT_API std::optional<Installation> findInstallation();
/// The same; throws LibraryError, which says what to do, if there is none.
QUILLON_CLIENT_API Installation requireInstallation();

}  // namespace quillon::client
