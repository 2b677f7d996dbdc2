#pragma once

#include <cstdint>
#include <map>

#include "quillon/RegisterInfo.h"

namespace quillon {

/// Process number to parameter id to record. The records are borrowed from the store that made them; all stand under
/// process 0.
using RegisterInfoById = std::map<int, std::map<int, RegisterInfo*>>;

/// The process under which they stand.
inline constexpr int PublicProcess = 0;

/// The access flags of a parameter that can be written, at all or in the mode of the moment, and of one that can't.
inline constexpr int OpenAccess = RegisterAccessReadable | RegisterAccessWritable | RegisterAccessCarried;
inline constexpr int ReadOnlyAccess = RegisterAccessReadable;

/// The handlers' door to the published records of process 0: the ranges and access flags that users are shown and that
/// follow what the applet accepts at the moment.
///
/// Nothing here fails. A record that the catalogue does not hold, or one of another kind than the operation is for, is
/// left out. Writers are kept apart by the parameter lock; readers take none and see each field whole.
class ParameterRecords {
public:
    /// `records` must outlive this object; it may be filled later.
    explicit ParameterRecords(RegisterInfoById& records) : recordsById_(records) {}

    /// The record of parameter `id`, or null.
    RegisterInfo* find(int id) const;

    void setMaximum(int id, std::uint32_t maximum);  ///< of a UInt record
    void setMaximum(int id, double maximum);         ///< of a Double record

    /// OpenAccess or ReadOnlyAccess. No handler consults the flags before a write.
    void setAccessFlags(int id, int flags);
    int accessFlags(int id) const;  ///< 0 for a record that does not exist

private:
    RegisterInfoById& recordsById_;
};

}  // namespace quillon
