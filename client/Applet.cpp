#include "client/Applet.h"

#include <algorithm>
#include <cstring>

#include "quillon/ErrorCode.h"
#include "quillon/RegisterInfo.h"

namespace quillon::client {

namespace {

constexpr unsigned Dma = 0;  // the only process of the applet

std::optional<std::string> optionalText(const char* text) {
    return text != nullptr ? std::optional<std::string>(text) : std::nullopt;
}

}  // namespace

Applet::Applet(const Library& library, IXdevice* device, int flags)
    : library_(library), location_(std::make_unique<QuillonWrapper*>(nullptr)) {
    int openStatus = 0;
    *location_ = functions().Std_entry(device, &openStatus, flags);
    if (*location_ == nullptr) {
        throw OpenError(openStatus);
    }
}

Applet::Applet(const Library& library, SoftBoard& board, int flags) : Applet(library, board.device(), flags) {}

Applet::~Applet() {
    if (location_ != nullptr && *location_ != nullptr) {
        close();
    }
}

int Applet::close() {
    return functions().Fg_FreeGrabber(handle());
}

int Applet::set(int id, const void* value, unsigned dma, FgParamTypes type) {
    return functions().Fg_setParameterWithType(handle(), id, value, dma, type);
}

int Applet::get(int id, void* value, unsigned dma, FgParamTypes type) {
    return functions().Fg_getParameterWithType(handle(), id, value, dma, type);
}

int Applet::freeText(int id, void* value, unsigned dma, FgParamTypes type) {
    return functions().Fg_freeParameterStringWithType(handle(), id, value, dma, type);
}

// A parameter is accessed in its natural width, whatever the type says, so a 32-bit value lies in 64 bits on its way:
// its low half is the value on this byte order.
template <typename Narrow>
int Applet::setNarrow(int id, Narrow value, FgParamTypes type) {
    const std::int64_t slot = value;
    return set(id, &slot, Dma, type);
}

template <typename Narrow>
int Applet::getNarrow(int id, Narrow& value, FgParamTypes type) {
    std::int64_t slot = value;
    const int code = get(id, &slot, Dma, type);
    value = static_cast<Narrow>(slot);
    return code;
}

int Applet::setInt(int id, std::int32_t value) {
    return setNarrow(id, value, FgTypeInt32);
}

int Applet::setUnsigned(int id, std::uint32_t value) {
    return setNarrow(id, value, FgTypeUInt32);
}

int Applet::setInt64(int id, std::int64_t value) {
    return set(id, &value, Dma, FgTypeInt64);
}

int Applet::setUnsigned64(int id, std::uint64_t value) {
    return set(id, &value, Dma, FgTypeUInt64);
}

int Applet::setDouble(int id, double value) {
    return set(id, &value, Dma, FgTypeDouble);
}

int Applet::setText(int id, const std::string& value) {
    return set(id, value.c_str(), Dma, FgTypeCharBuffer);
}

int Applet::getInt(int id, std::int32_t& value) {
    return getNarrow(id, value, FgTypeInt32);
}

int Applet::getUnsigned(int id, std::uint32_t& value) {
    return getNarrow(id, value, FgTypeUInt32);
}

int Applet::getInt64(int id, std::int64_t& value) {
    return get(id, &value, Dma, FgTypeInt64);
}

int Applet::getUnsigned64(int id, std::uint64_t& value) {
    return get(id, &value, Dma, FgTypeUInt64);
}

int Applet::getDouble(int id, double& value) {
    return get(id, &value, Dma, FgTypeDouble);
}

int Applet::getText(int id, std::string& value) {
    char* text = nullptr;
    const int code = get(id, &text, Dma, FgTypeString);
    if (code == Success && text != nullptr) {
        value = text;
        freeText(id, text);
    }
    return code;
}

namespace {

/// The value that a getter of the applet fills, or the exception.
template <typename Value>
Value readWith(Applet& applet, int (Applet::*getter)(int, Value&), int id) {
    Value value{};
    if (const int code = (applet.*getter)(id, value); code != Success) {
        throw ParameterError("a get", id, code);
    }
    return value;
}

}  // namespace

std::int32_t Applet::readInt(int id) {
    return readWith(*this, &Applet::getInt, id);
}

std::uint32_t Applet::readUnsigned(int id) {
    return readWith(*this, &Applet::getUnsigned, id);
}

std::int64_t Applet::readInt64(int id) {
    return readWith(*this, &Applet::getInt64, id);
}

std::uint64_t Applet::readUnsigned64(int id) {
    return readWith(*this, &Applet::getUnsigned64, id);
}

double Applet::readDouble(int id) {
    return readWith(*this, &Applet::getDouble, id);
}

std::string Applet::readText(int id) {
    return readWith(*this, &Applet::getText, id);
}

int Applet::setField(int id, std::span<const std::uint32_t> values, std::uint32_t index) {
    // The record serves both directions, hence its pointer to values that could be changed; a set only reads them.
    const FieldParameterAccess access{FgTypeUInt32, index, static_cast<std::uint32_t>(values.size()),
                                      const_cast<std::uint32_t*>(values.data())};
    return set(id, &access, Dma, FgTypeFieldAccess);
}

int Applet::getField(int id, std::span<std::uint32_t> values, std::uint32_t index) {
    FieldParameterAccess access{FgTypeUInt32, index, static_cast<std::uint32_t>(values.size()), values.data()};
    return get(id, &access, Dma, FgTypeFieldAccess);
}

int Applet::setElement(int id, std::uint32_t index, std::uint32_t value) {
    const FieldParameterInt_s element{value, index};
    return set(id, &element, Dma, FgTypeFieldInt);
}

int Applet::getElement(int id, std::uint32_t index, std::uint32_t& value) {
    FieldParameterInt_s element{0, index};
    const int code = get(id, &element, Dma, FgTypeFieldInt);
    value = element.value;
    return code;
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

std::string Applet::readDescription(const std::string& name) {
    // The slot goes in as the name and comes back as a pointer to the text, so it must have room for either.
    std::vector<char*> slot(name.size() / sizeof(char*) + 1, nullptr);
    std::memcpy(slot.data(), name.c_str(), name.size() + 1);
    if (const int code = get(FG_PARAM_DESCR, slot.data(), Dma, FgTypeString); code != Success) {
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

int Applet::saveConfig(const std::filesystem::path& file) {
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
