/// @file
/// One parameter of a board with its value, and what an access of it does.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "softboard/export.h"
#include "softboard/src/DesignDescription.h"

namespace softboard {

/// A run of table elements as the SDK passes it.
struct FieldAccess {
    std::int32_t vtype;
    std::uint32_t index;
    std::uint32_t count;
    void* value;
};
static_assert(sizeof(FieldAccess) == 24 && offsetof(FieldAccess, value) == 16);

/// One table element as the SDK passes it.
struct FieldInt {
    std::uint32_t value;
    std::uint32_t index;
};
static_assert(sizeof(FieldInt) == 8);

/// Value types that are no parameter's own.
inline constexpr int NewTextType = 22;
inline constexpr int FieldIntType = 4098;

/// Not locked; the board's lock guards it.
class SOFTBOARD_API Parameter {
public:
    /// `description` has to outlive the parameter.
    explicit Parameter(const ParameterDescription& description);

    const ParameterDescription& description() const { return *description_; }

    /// Accesses with an SDK value type. 0, or SOFTBOARD_E_ARGUMENT (null), _TYPE, _RANGE, _READ_ONLY, _WRITE_ONLY; a
    /// failure changes nothing. A text goes to and comes from the characters at `value`; type 22 is not served here.
    int read(void* value, int type) const;
    int write(const void* value, int type);

    /// The hardware's own view, whatever the access rights. `wide` integers are cut to the parameter's width.
    int setInteger(std::int64_t value);
    int integer(std::int64_t& value) const;
    int setReal(double value);
    int real(double& value) const;
    /// The same without a code: 0 where the type is another.
    std::int64_t integer() const { return integer_; }
    double real() const { return real_; }
    int setText(std::string value);
    int text(std::string& value) const;
    int setElement(std::size_t index, std::int64_t value);
    int element(std::size_t index, std::int64_t& value) const;
    /// The first elements of a table, the low 16 bits of each; what the table lacks stays as it is.
    void copyTable(std::span<std::uint16_t> elements) const;

    /// Marks a parameter whose changes move something else; the mark costs an access no more than a look at it.
    void watch() { watched_ = true; }
    bool watched() const { return watched_; }

    /// True if an access with `type` fits; type 22 fits texts.
    bool accepts(int type) const;
    bool isInteger() const { return description_->type <= ValueType::UInt64; }

private:
    int readField(void* value, int type) const;
    int writeField(const void* value, int type);
    std::int64_t cut(std::int64_t value) const;

    const ParameterDescription* description_;
    std::int64_t integer_;
    double real_;
    std::string text_;
    std::vector<std::uint32_t> table_;
    bool watched_ = false;
};

/// The value of an access as a transcript shows it. `value` is what a caller passed (null gives an empty text).
SOFTBOARD_API std::string shownValue(const void* value, int type);

}  // namespace softboard
