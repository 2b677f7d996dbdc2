#include "quillon/client/Applet.h"

#include <algorithm>
#include <cstring>

#include "quillon/PublicParameters.h"
#include "quillon/client/Accepted.h"

namespace quillon::client {

namespace {

constexpr unsigned Dma = 0;  // the only process of the applet

std::optional<std::string> optionalText(const char* text) {
    return text != nullptr ? std::optional<std::string>(text) : std::nullopt;
}

}  // namespace

Applet::Applet(const Library& library, IXdevice* device, int flags)
    : library_(library),
      location_(std::make_unique<QuillonWrapper*>(nullptr)),
      handle_(location_.get()),
      ownership_(Ownership::Owned) {
    int openStatus = 0;
    *location_ = functions().Std_entry(device, &openStatus, flags);
    if (*location_ == nullptr) {
        throw OpenError(openStatus);
    }
}

Applet::Applet(const Library& library, QuillonHandle handle, Ownership ownership)
    : library_(library), handle_(handle), ownership_(ownership) {}

Applet Applet::attach(QuillonHandle handle, Ownership ownership) {
    return attach(Library::loaded(), handle, ownership);
}

Applet Applet::attach(const Library& library, QuillonHandle handle, Ownership ownership) {
    if (handle == nullptr || *handle == nullptr) {
        throw CallError("Applet::attach", InvalidHandle);
    }
    return Applet(library, handle, ownership);
}

Applet::Applet(Applet&& other) noexcept
    : library_(std::move(other.library_)),
      location_(std::move(other.location_)),
      handle_(std::exchange(other.handle_, nullptr)),
      ownership_(other.ownership_) {}

Applet::~Applet() {
    if (handle_ != nullptr && *handle_ != nullptr) {
        close();
    }
}

int Applet::close() {
    if (ownership_ == Ownership::Owned) {
        return functions().Fg_FreeGrabber(handle());
    }
    handle_ = nullptr;
    return Success;
}

int Applet::idOf(ParameterName parameter) const {
    if (parameter.isId()) {
        return parameter.id();
    }
    const PublicParameter* const known = findPublicParameter(parameter.name());
    return known != nullptr ? known->id : parameterId(std::string(parameter.name()));
}

int Applet::requireId(const char* function, ParameterName parameter) const {
    const int id = idOf(parameter);
    if (!parameter.isId() && id < 0) {
        throw ParameterError(function, parameter.name());
    }
    return id;
}

std::string Applet::nameOf(int id) const {
    const PublicParameter* const known = findPublicParameter(id);
    return known != nullptr ? std::string(known->name) : "parameter " + std::to_string(id);
}

// Values, throwing

void Applet::set(ParameterName parameter, const Value& value) {
    const int id = requireId("a set", parameter);
    const int code = setValue(id, value);
    if (code != Success) {
        const std::string name = nameOf(id);
        const auto described = isAboutTheValue(code) ? record(id) : std::nullopt;
        throw Refused(id, name, value.inWords(), code, described ? acceptedValues(acceptedNow(*this, *described)) : "",
                      std::string(isAboutTheValue(code) ? rangeReason(name) : ""));
    }
}

namespace {

/// The number of the enumerator that a text names.
std::int32_t enumeratorValue(const std::string& parameter, const std::optional<ParameterRecord>& record,
                             const std::string& text) {
    if (record) {
        const auto entry = std::ranges::find(record->entries, text, &EnumEntry::name);
        if (entry != record->entries.end()) {
            return entry->value;
        }
    }
    throw ValueError("\"" + text + "\" is no value for " + parameter + ", which takes " +
                     (record ? acceptedValues(*record) : "a number"));
}

/// A whole number as the 32 or 64 bits of its parameter, which the applet takes with a sign or without.
template <typename Signed, typename Unsigned>
Signed wholeNumber(const std::string& parameter, const Value& value) {
    if (const auto number = value.asIf<Signed>()) {
        return *number;
    }
    if (const auto number = value.asIf<Unsigned>()) {
        return static_cast<Signed>(*number);
    }
    throw ValueError(value.inWords() + " is no value for " + parameter + ", which takes a whole number of " +
                     std::to_string(8 * sizeof(Signed)) + " bits");
}

/// The kind of a parameter by its record, which knows registers and the SDK's own parameters, too.
ParameterKind kindOf(int id, const std::optional<ParameterRecord>& record) {
    if (record && record->valueKind() != ParameterKind::Int) {
        return record->valueKind();
    }
    const PublicParameter* const known = findPublicParameter(id);
    // A register is as wide as it may be.
    return known != nullptr                           ? known->kind
           : id > FG_REGISTER_IDS && id <= FG_SDK_IDS ? ParameterKind::Int64
                                                      : ParameterKind::Int;
}

[[noreturn]] void refuseField(const std::string& parameter) {
    throw ValueError(parameter + " is a table: its entries go through setField, getField, setElement and getElement");
}

}  // namespace

int Applet::setValue(int id, const Value& value) {
    const auto described = record(id);
    const ParameterKind kind = kindOf(id, described);
    const std::string name = nameOf(id);
    if (kind == ParameterKind::Field) {
        refuseField(name);
    }
    if (kind == ParameterKind::String) {
        if (!value.isText()) {
            throw ValueError(value.inWords() + " is no value for " + name + ", which takes a text");
        }
        return setText(id, value.as<std::string>());
    }
    const Value number = value.isText() ? Value(enumeratorValue(name, described, value.as<std::string>())) : value;
    switch (kind) {
        case ParameterKind::Double: return setDouble(id, number.as<double>());
        case ParameterKind::Int64: return setInt64(id, wholeNumber<std::int64_t, std::uint64_t>(name, number));
        default: return setInt(id, wholeNumber<std::int32_t, std::uint32_t>(name, number));
    }
}

Value Applet::get(ParameterName parameter) const {
    const int id = requireId("a get", parameter);
    const auto described = record(id);
    const bool isUnsigned = described && (described->kind == RecordKind::UInt || described->kind == RecordKind::UInt64);
    switch (kindOf(id, described)) {
        case ParameterKind::Field: refuseField(nameOf(id));
        case ParameterKind::String: return readText(id);
        case ParameterKind::Double: return readDouble(id);
        case ParameterKind::Int64: return isUnsigned ? Value(readUnsigned64(id)) : Value(readInt64(id));
        case ParameterKind::Int:
        case ParameterKind::Forwarded: break;
    }
    return isUnsigned ? Value(readUnsigned(id)) : Value(readInt(id));
}

std::string Applet::enumerator(ParameterName parameter) const {
    const int id = requireId("a get", parameter);
    const auto described = record(id);
    const EnumEntry* const entry =
        described && described->kind == RecordKind::Enum ? described->entry(readInt(id)) : nullptr;
    return entry != nullptr ? entry->name : "";
}

// Values, by code

// A parameter is accessed in its natural width, whatever the type says, so a 32-bit value lies in 64 bits on its way:
// its low half is the value on this byte order.
template <typename Narrow>
int Applet::setNarrow(ParameterName parameter, Narrow value, FgParamTypes type) {
    const std::int64_t slot = value;
    return setWithType(idOf(parameter), &slot, Dma, type);
}

template <typename Narrow>
int Applet::getNarrow(ParameterName parameter, Narrow& value, FgParamTypes type) const {
    std::int64_t slot = value;
    const int code = getWithType(idOf(parameter), &slot, Dma, type);
    value = static_cast<Narrow>(slot);
    return code;
}

int Applet::setInt(ParameterName parameter, std::int32_t value) {
    return setNarrow(parameter, value, FgTypeInt32);
}

int Applet::setUnsigned(ParameterName parameter, std::uint32_t value) {
    return setNarrow(parameter, value, FgTypeUInt32);
}

int Applet::setInt64(ParameterName parameter, std::int64_t value) {
    return setWithType(idOf(parameter), &value, Dma, FgTypeInt64);
}

int Applet::setUnsigned64(ParameterName parameter, std::uint64_t value) {
    return setWithType(idOf(parameter), &value, Dma, FgTypeUInt64);
}

int Applet::setDouble(ParameterName parameter, double value) {
    return setWithType(idOf(parameter), &value, Dma, FgTypeDouble);
}

int Applet::setText(ParameterName parameter, const std::string& value) {
    return setWithType(idOf(parameter), value.c_str(), Dma, FgTypeCharBuffer);
}

int Applet::getInt(ParameterName parameter, std::int32_t& value) const {
    return getNarrow(parameter, value, FgTypeInt32);
}

int Applet::getUnsigned(ParameterName parameter, std::uint32_t& value) const {
    return getNarrow(parameter, value, FgTypeUInt32);
}

int Applet::getInt64(ParameterName parameter, std::int64_t& value) const {
    return getWithType(idOf(parameter), &value, Dma, FgTypeInt64);
}

int Applet::getUnsigned64(ParameterName parameter, std::uint64_t& value) const {
    return getWithType(idOf(parameter), &value, Dma, FgTypeUInt64);
}

int Applet::getDouble(ParameterName parameter, double& value) const {
    return getWithType(idOf(parameter), &value, Dma, FgTypeDouble);
}

int Applet::getText(ParameterName parameter, std::string& value) const {
    char* text = nullptr;
    const int id = idOf(parameter);
    const int code = getWithType(id, &text, Dma, FgTypeString);
    if (code == Success && text != nullptr) {
        value = text;
        freeText(id, text);
    }
    return code;
}

namespace {

/// The value that a getter of the applet fills, or the exception.
template <typename Value>
Value readWith(const Applet& applet, int (Applet::*getter)(ParameterName, Value&) const, int id) {
    Value value{};
    if (const int code = (applet.*getter)(id, value); code != Success) {
        throw ParameterError("a get", id, code);
    }
    return value;
}

}  // namespace

std::int32_t Applet::readInt(ParameterName parameter) const {
    return readWith(*this, &Applet::getInt, requireId("a get", parameter));
}

std::uint32_t Applet::readUnsigned(ParameterName parameter) const {
    return readWith(*this, &Applet::getUnsigned, requireId("a get", parameter));
}

std::int64_t Applet::readInt64(ParameterName parameter) const {
    return readWith(*this, &Applet::getInt64, requireId("a get", parameter));
}

std::uint64_t Applet::readUnsigned64(ParameterName parameter) const {
    return readWith(*this, &Applet::getUnsigned64, requireId("a get", parameter));
}

double Applet::readDouble(ParameterName parameter) const {
    return readWith(*this, &Applet::getDouble, requireId("a get", parameter));
}

std::string Applet::readText(ParameterName parameter) const {
    return readWith(*this, &Applet::getText, requireId("a get", parameter));
}

int Applet::setField(ParameterName parameter, std::span<const std::uint32_t> values, std::uint32_t index) {
    // The record serves both directions, hence its pointer to values that could be changed; a set only reads them.
    const FieldParameterAccess access{FgTypeUInt32, index, static_cast<std::uint32_t>(values.size()),
                                      const_cast<std::uint32_t*>(values.data())};
    return setWithType(idOf(parameter), &access, Dma, FgTypeFieldAccess);
}

int Applet::getField(ParameterName parameter, std::span<std::uint32_t> values, std::uint32_t index) const {
    FieldParameterAccess access{FgTypeUInt32, index, static_cast<std::uint32_t>(values.size()), values.data()};
    return getWithType(idOf(parameter), &access, Dma, FgTypeFieldAccess);
}

int Applet::setElement(ParameterName parameter, std::uint32_t index, std::uint32_t value) {
    const FieldParameterInt_s element{value, index};
    return setWithType(idOf(parameter), &element, Dma, FgTypeFieldInt);
}

int Applet::getElement(ParameterName parameter, std::uint32_t index, std::uint32_t& value) const {
    FieldParameterInt_s element{0, index};
    const int code = getWithType(idOf(parameter), &element, Dma, FgTypeFieldInt);
    value = element.value;
    return code;
}

int Applet::setWithType(int id, const void* value, unsigned dma, FgParamTypes type) {
    return functions().Fg_setParameterWithType(handle(), id, value, dma, type);
}

int Applet::getWithType(int id, void* value, unsigned dma, FgParamTypes type) const {
    return functions().Fg_getParameterWithType(handle(), id, value, dma, type);
}

int Applet::freeText(int id, void* value, unsigned dma, FgParamTypes type) const {
    return functions().Fg_freeParameterStringWithType(handle(), id, value, dma, type);
}

int Applet::lastError() const {
    return functions().Fg_getLastErrorNumber(handle());
}

int Applet::parameterCount() const {
    return functions().Fg_getNrOfParameter(handle());
}

int Applet::parameterId(const std::string& name) const {
    return functions().Fg_getParameterIdByName(handle(), name.c_str());
}

int Applet::parameterIdAt(int position) const {
    return functions().Fg_getParameterId(handle(), position);
}

std::optional<std::string> Applet::parameterNameAt(int position) const {
    return optionalText(functions().Fg_getParameterName(handle(), position));
}

std::string Applet::readDescription(const std::string& name) const {
    // The slot goes in as the name and comes back as a pointer to the text, so it must have room for either.
    std::vector<char*> slot(name.size() / sizeof(char*) + 1, nullptr);
    std::memcpy(slot.data(), name.c_str(), name.size() + 1);
    if (const int code = getWithType(FG_PARAM_DESCR, slot.data(), Dma, FgTypeString); code != Success) {
        throw ParameterError("a get", FG_PARAM_DESCR, code);
    }
    std::string description = slot.front();
    freeText(FG_PARAM_DESCR, slot.front());
    return description;
}

std::uint64_t Applet::eventMask(const std::string& name) const {
    return functions().Fg_getEventMask(handle(), name.c_str());
}

std::optional<std::string> Applet::eventName(std::uint64_t mask) const {
    return optionalText(functions().Fg_getEventName(handle(), mask));
}

std::vector<std::pair<std::uint64_t, std::string>> Applet::events() const {
    std::vector<std::pair<std::uint64_t, std::string>> named;
    for (int bit = 0; bit < 64; ++bit) {
        const std::uint64_t mask = std::uint64_t{1} << bit;
        if (auto name = eventName(mask)) {
            named.emplace_back(mask, std::move(*name));
        }
    }
    return named;
}

std::vector<ParameterRecord> Applet::parameterInfo(int port) const {
    std::vector<ParameterRecord> trees;
    for (const RegisterInfo* record = functions().Fg_getParameterInfo(handle(), port); record != nullptr;
         record = record->next) {
        trees.push_back(copyRecord(*record));
    }
    return trees;
}

std::optional<ParameterRecord> Applet::record(ParameterName parameter) const {
    const RegisterInfo* const found = findRecord(functions().Fg_getParameterInfo(handle(), 0), idOf(parameter));
    return found != nullptr ? std::optional(copyRecord(*found)) : std::nullopt;
}

std::string Applet::xml(int port) const {
    std::size_t size = 0;
    int code = functions().Fg_getParameterInfoXML(handle(), port, nullptr, &size);
    std::string document(size, '\0');
    if (code == Success) {
        code = functions().Fg_getParameterInfoXML(handle(), port, document.data(), &size);
    }
    if (code != Success) {
        throw CallError("Fg_getParameterInfoXML", code);
    }
    document.resize(size - 1);  // without the terminator
    return document;
}

int Applet::saveConfig(const std::filesystem::path& file) const {
    return functions().Fg_saveConfig(handle(), file.c_str());
}

int Applet::loadConfig(const std::filesystem::path& file) {
    return functions().Fg_loadConfig(handle(), file.c_str());
}

int Applet::appletId(void* argument) {
    return functions().Fg_getAppletId(handle(), argument);
}

int Applet::acquire(unsigned dma, std::int64_t pictures, unsigned flags, void* memory) {
    return functions().Fg_AcquireEx(handle(), dma, pictures, flags, memory);
}

int Applet::stopAcquire(unsigned dma, void* memory, unsigned flags) {
    return functions().Fg_stopAcquireEx(handle(), dma, memory, flags);
}

std::int64_t Applet::status(unsigned parameter, std::int64_t data, unsigned dma, void* memory) {
    return functions().Fg_getStatusEx(handle(), parameter, data, dma, memory);
}

std::int64_t Applet::lastPicture(unsigned dma, void* memory) {
    return functions().Fg_getLastPicNumberEx(handle(), dma, memory);
}

std::int64_t Applet::lastPictureBlocking(std::int64_t picture, unsigned dma, unsigned timeout, void* memory) {
    return functions().Fg_getLastPicNumberBlockingEx(handle(), picture, dma, timeout, memory);
}

ShadingMaster* Applet::allocateShading(int set, int mode) {
    return functions().Fg_AllocShading(handle(), set, mode);
}

int Applet::freeShading(ShadingMaster* shading) {
    return functions().Fg_FreeShading(handle(), shading);
}

int Applet::setSubtractLine(ShadingMaster* shading, int x, int channel, float value) {
    return functions().Shad_SetSubValueLine(handle(), shading, x, channel, value);
}

int Applet::setMultiplyLine(ShadingMaster* shading, int x, int channel, float value) {
    return functions().Shad_SetMultValueLine(handle(), shading, x, channel, value);
}

int Applet::setFixedPatternNoiseLine(ShadingMaster* shading, int x, int channel, int on) {
    return functions().Shad_SetFixedPatternNoiseLine(handle(), shading, x, channel, on);
}

int Applet::maxLine(ShadingMaster* shading) {
    return functions().Shad_GetMaxLine(handle(), shading);
}

int Applet::shadingAccess(ShadingMaster* shading) {
    return functions().Shad_GetAccess(handle(), shading);
}

int Applet::freeShadingAccess(ShadingMaster* shading) {
    return functions().Shad_FreeAccess(handle(), shading);
}

int Applet::writeActiveLine(ShadingMaster* shading, int line) {
    return functions().Shad_WriteActLine(handle(), shading, line);
}

}  // namespace quillon::client
