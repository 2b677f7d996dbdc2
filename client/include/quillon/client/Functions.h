/// @file
/// The exported functions of libQuillon.so as they are: for callers who want to pass exactly what they choose, null
/// handles included. Everyone else uses Applet.
#pragma once

#include "quillon/quillon.h"

namespace quillon::client {

/// The exported functions, by their names; quillon/quillon.h tells what each does.
struct Functions {
#define QUILLON_EXPORT(name) decltype(&::name) name = nullptr;
#include "quillon/Exports.def"
#undef QUILLON_EXPORT
};

}  // namespace quillon::client
