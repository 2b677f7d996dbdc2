/// @file
/// What stands behind a handle of quillon/quillon.h.
#pragma once

#include "engine/FgIxWrapperImpl.h"
#include "quillon/quillon.h"

namespace quillon {

/// The wrapper as the host holds it, and back.
inline QuillonWrapper* asHeldByHost(FgIxWrapperImpl* wrapper) {
    return reinterpret_cast<QuillonWrapper*>(wrapper);
}

/// The wrapper behind `handle`; null for an invalid handle.
inline FgIxWrapperImpl* wrapperOf(QuillonHandle handle) {
    return handle != nullptr ? reinterpret_cast<FgIxWrapperImpl*>(*handle) : nullptr;
}

}  // namespace quillon
