#include "softboard/src/Parameter.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "softboard/softboard.h"
#include "softboard/src/Transcript.h"

namespace softboard {
namespace {

constexpr int Int32Type = static_cast<int>(ValueType::Int32);
constexpr int UInt32Type = static_cast<int>(ValueType::UInt32);
constexpr int Int64Type = static_cast<int>(ValueType::Int64);
constexpr int UInt64Type = static_cast<int>(ValueType::UInt64);
constexpr int DoubleType = static_cast<int>(ValueType::Double);
constexpr int TextType = static_cast<int>(ValueType::Text);
constexpr int FieldType = static_cast<int>(ValueType::Table);

template <class Value>
Value loaded(const void* from, std::size_t position = 0) {
    Value value;
    std::memcpy(&value, static_cast<const char*>(from) + position * sizeof(Value), sizeof value);
    return value;
}

template <class Value>
void stored(void* to, Value value, std::size_t position = 0) {
    std::memcpy(static_cast<char*>(to) + position * sizeof(Value), &value, sizeof value);
}

/// Bytes per element that a field access moves; 0 for a type that no table has.
std::size_t elementSize(int vtype) {
    switch (vtype) {
        case Int32Type:
        case UInt32Type:
        case FieldIntType: return 4;
        case Int64Type:
        case UInt64Type: return 8;
        default: return 0;
    }
}

int checkField(const FieldAccess& access, std::size_t length) {
    if (elementSize(access.vtype) == 0) {
        return SOFTBOARD_E_TYPE;
    }
    if (access.index > length || access.count > length - access.index) {
        return SOFTBOARD_E_RANGE;
    }
    return access.value == nullptr && access.count != 0 ? SOFTBOARD_E_ARGUMENT : SOFTBOARD_OK;
}

}  // namespace

Parameter::Parameter(const ParameterDescription& description)
    : description_(&description),
      integer_(isInteger() ? description.integer : 0),
      real_(description.type == ValueType::Double ? description.real : 0.0),
      text_(description.text),
      table_(description.length) {}

bool Parameter::accepts(int type) const {
    switch (description_->type) {
        case ValueType::Text: return type == TextType || type == NewTextType;
        case ValueType::Table: return type == FieldType || type == FieldIntType;
        case ValueType::Double: return type == DoubleType;
        default:
            return type == static_cast<int>(description_->type) ||
                   (description_->anyIntegerType && type >= Int32Type && type <= UInt64Type);
    }
}

int Parameter::read(void* value, int type) const {
    if (value == nullptr) {
        return SOFTBOARD_E_ARGUMENT;
    }
    if (!accepts(type)) {
        return SOFTBOARD_E_TYPE;
    }
    if (!description_->readable) {
        return SOFTBOARD_E_WRITE_ONLY;
    }
    switch (type) {
        case Int32Type:
        case UInt32Type: stored(value, static_cast<std::uint32_t>(integer_)); return SOFTBOARD_OK;
        case Int64Type:
        case UInt64Type: stored(value, integer_); return SOFTBOARD_OK;
        case DoubleType: stored(value, real_); return SOFTBOARD_OK;
        case TextType: std::memcpy(value, text_.c_str(), text_.size() + 1); return SOFTBOARD_OK;
        default: return readField(value, type);
    }
}

int Parameter::write(const void* value, int type) {
    if (value == nullptr) {
        return SOFTBOARD_E_ARGUMENT;
    }
    if (!accepts(type)) {
        return SOFTBOARD_E_TYPE;
    }
    if (!description_->writable) {
        return SOFTBOARD_E_READ_ONLY;
    }
    switch (type) {
        case Int32Type: integer_ = cut(loaded<std::int32_t>(value)); return SOFTBOARD_OK;
        case UInt32Type: integer_ = cut(loaded<std::uint32_t>(value)); return SOFTBOARD_OK;
        case Int64Type:
        case UInt64Type: integer_ = cut(loaded<std::int64_t>(value)); return SOFTBOARD_OK;
        case DoubleType: real_ = loaded<double>(value); return SOFTBOARD_OK;
        case TextType: text_ = static_cast<const char*>(value); return SOFTBOARD_OK;
        case NewTextType: return SOFTBOARD_E_TYPE;
        default: return writeField(value, type);
    }
}

int Parameter::readField(void* value, int type) const {
    if (type == FieldIntType) {
        auto record = loaded<FieldInt>(value);
        if (record.index >= table_.size()) {
            return SOFTBOARD_E_RANGE;
        }
        record.value = table_[record.index];
        stored(value, record);
        return SOFTBOARD_OK;
    }
    const auto access = loaded<FieldAccess>(value);
    if (const int code = checkField(access, table_.size()); code != SOFTBOARD_OK) {
        return code;
    }
    for (std::uint32_t position = 0; position < access.count; ++position) {
        const std::uint32_t entry = table_[access.index + position];
        if (elementSize(access.vtype) == 4) {
            stored(access.value, entry, position);
        } else {
            stored(access.value, std::uint64_t{entry}, position);
        }
    }
    return SOFTBOARD_OK;
}

int Parameter::writeField(const void* value, int type) {
    if (type == FieldIntType) {
        const auto record = loaded<FieldInt>(value);
        return setElement(record.index, record.value);
    }
    const auto access = loaded<FieldAccess>(value);
    if (const int code = checkField(access, table_.size()); code != SOFTBOARD_OK) {
        return code;
    }
    if (access.count != 0 && elementSize(access.vtype) == sizeof table_[0]) {
        std::memcpy(&table_[access.index], access.value, access.count * sizeof table_[0]);
        return SOFTBOARD_OK;
    }
    for (std::uint32_t position = 0; position < access.count; ++position) {
        table_[access.index + position] = static_cast<std::uint32_t>(loaded<std::uint64_t>(access.value, position));
    }
    return SOFTBOARD_OK;
}

std::int64_t Parameter::cut(std::int64_t value) const {
    switch (description_->type) {
        case ValueType::Int32: return static_cast<std::int32_t>(value);
        case ValueType::UInt32: return static_cast<std::uint32_t>(value);
        default: return value;
    }
}

int Parameter::setInteger(std::int64_t value) {
    if (!isInteger()) {
        return SOFTBOARD_E_TYPE;
    }
    integer_ = cut(value);
    return SOFTBOARD_OK;
}

int Parameter::integer(std::int64_t& value) const {
    if (!isInteger()) {
        return SOFTBOARD_E_TYPE;
    }
    value = integer_;
    return SOFTBOARD_OK;
}

int Parameter::setReal(double value) {
    if (description_->type != ValueType::Double) {
        return SOFTBOARD_E_TYPE;
    }
    real_ = value;
    return SOFTBOARD_OK;
}

int Parameter::real(double& value) const {
    if (description_->type != ValueType::Double) {
        return SOFTBOARD_E_TYPE;
    }
    value = real_;
    return SOFTBOARD_OK;
}

int Parameter::setText(std::string value) {
    if (description_->type != ValueType::Text) {
        return SOFTBOARD_E_TYPE;
    }
    text_ = std::move(value);
    return SOFTBOARD_OK;
}

int Parameter::text(std::string& value) const {
    if (description_->type != ValueType::Text) {
        return SOFTBOARD_E_TYPE;
    }
    value = text_;
    return SOFTBOARD_OK;
}

int Parameter::setElement(std::size_t index, std::int64_t value) {
    if (description_->type != ValueType::Table) {
        return SOFTBOARD_E_TYPE;
    }
    if (index >= table_.size()) {
        return SOFTBOARD_E_RANGE;
    }
    table_[index] = static_cast<std::uint32_t>(value);
    return SOFTBOARD_OK;
}

int Parameter::element(std::size_t index, std::int64_t& value) const {
    if (description_->type != ValueType::Table) {
        return SOFTBOARD_E_TYPE;
    }
    if (index >= table_.size()) {
        return SOFTBOARD_E_RANGE;
    }
    value = table_[index];
    return SOFTBOARD_OK;
}

void Parameter::copyTable(std::span<std::uint16_t> elements) const {
    const std::size_t count = std::min(elements.size(), table_.size());
    for (std::size_t index = 0; index < count; ++index) {
        elements[index] = static_cast<std::uint16_t>(table_[index]);
    }
}

namespace {

void appendElement(std::string& text, const void* values, int vtype, std::size_t position) {
    switch (vtype) {
        case Int32Type: appendNumber(text, std::int64_t{loaded<std::int32_t>(values, position)}); break;
        case Int64Type: appendNumber(text, loaded<std::int64_t>(values, position)); break;
        case UInt64Type: appendNumber(text, loaded<std::uint64_t>(values, position)); break;
        default: appendNumber(text, std::uint64_t{loaded<std::uint32_t>(values, position)}); break;
    }
}

std::string shownField(const FieldAccess& access) {
    std::string text = "[";
    appendNumber(text, std::uint64_t{access.index});
    text += "..";
    appendNumber(text, static_cast<std::int64_t>(access.index) + access.count - 1);
    text += "]=";
    if (elementSize(access.vtype) == 0 || access.value == nullptr) {
        return text;
    }
    text.reserve(text.size() + 6 * std::size_t{std::min(access.count, 65536U)});
    for (std::uint32_t position = 0; position < access.count; ++position) {
        if (position != 0) {
            text += ',';
        }
        appendElement(text, access.value, access.vtype, position);
    }
    return text;
}

}  // namespace

std::string shownValue(const void* value, int type) {
    std::string text;
    if (value == nullptr) {
        return text;
    }
    switch (type) {
        case Int32Type:
        case UInt32Type:
        case Int64Type:
        case UInt64Type: appendElement(text, value, type, 0); break;
        case DoubleType: appendNumber(text, loaded<double>(value)); break;
        case TextType: text = static_cast<const char*>(value); break;
        case NewTextType: text = loaded<const char*>(value); break;
        case FieldType: text = shownField(loaded<FieldAccess>(value)); break;
        case FieldIntType: {
            const auto record = loaded<FieldInt>(value);
            text = '[';
            appendNumber(text, std::uint64_t{record.index});
            text += "]=";
            appendNumber(text, std::uint64_t{record.value});
            break;
        }
        default: break;
    }
    return text;
}

}  // namespace softboard
