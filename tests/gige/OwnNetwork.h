/// @file
/// A network of its own for a test program: devices have one port, and tests run side by side.
#pragma once

namespace quillon::gige {

/// Gives this program, and those that it starts, a network of its own with nothing but an interface lo, if the system
/// lets it, also for an ordinary user. To be called before there are threads.
/// @return whether it did; otherwise all is as before
bool enterOwnNetwork();

}  // namespace quillon::gige
