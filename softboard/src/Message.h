/// @file
/// What a call of the control interface answers.
#pragma once

#include <string>

namespace softboard {

/// A SOFTBOARD_E_... code, and why, for people; 0 and no text if all went well.
struct Message {
    int code = 0;
    std::string text;
};

}  // namespace softboard
