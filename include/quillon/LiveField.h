/// @file
/// Fields of records that a handler changes while a reader without a lock may be looking: a reader sees the old value
/// or the new one, never a mixture.
#pragma once

#include <atomic>

namespace quillon {

template <typename Field>
Field loadLive(const Field& field) {
    // An atomic_ref needs an object that is not const, though a load changes nothing.
    return std::atomic_ref<Field>(const_cast<Field&>(field)).load(std::memory_order_relaxed);
}

template <typename Field>
void storeLive(Field& field, Field value) {
    std::atomic_ref<Field>(field).store(value, std::memory_order_relaxed);
}

}  // namespace quillon
