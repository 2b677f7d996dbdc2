#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "quillon/client/Errors.h"
#include "quillon/client/Export.h"
#include "quillon/client/Functions.h"
#include "quillon/client/Library.h"
#include "quillon/client/ParameterName.h"
#include "quillon/client/ParameterRecord.h"
#include "quillon/client/Value.h"

namespace quillon::client {

class Setting;

/// Whose a handle is that an Applet was attached to.
enum class Ownership {
    Borrowed,  ///< the host's: it stays open when the Applet goes
    Owned,     ///< the Applet's: it is freed with it
};

/// An open applet: one that it opened itself, playing the part of the SDK, or one that a host has opened.
///
///     Applet applet(library, device);
///     applet.set("FG_WIDTH", 2048);
///     applet["FG_FORMAT"] = "FG_COL24";
///     const double period = applet["FG_LINEPERIODE"];
///
/// A parameter is named by its id (FG_WIDTH) or its name ("FG_WIDTH"), everywhere. `set`, `get`, `[]` and all functions
/// whose names begin with "read" throw what they are refused. Functions that return `int` answer the applet's own code,
/// 0 for success, and throw nothing of their own. Parameter calls may come from several threads at once; moving and
/// destroying must not race with any call.
class QUILLON_CLIENT_API Applet {
public:
    /// Opens the applet on a board, of the SDK or in software (SoftBoard). With bit 0 of `flags` set the design is left
    /// as it is, else it gets the start-up state. Throws OpenError with the status that Std_entry stored.
    Applet(const Library& library, IXdevice* device, int flags = 0);

    /// Serves a handle that a host already has, through the functions of the library that this process has loaded; the
    /// host keeps the handle's location as long as the Applet lives. Throws LibraryError if no libQuillon.so is loaded,
    /// CallError (InvalidHandle) for a handle that is null or holds null.
    static Applet attach(QuillonHandle handle, Ownership ownership = Ownership::Borrowed);
    /// The same through the functions of `library`, from which the handle must have come.
    static Applet attach(const Library& library, QuillonHandle handle, Ownership ownership = Ownership::Borrowed);

    Applet(Applet&& other) noexcept;
    Applet& operator=(Applet&&) = delete;
    /// Frees the applet, unless it is borrowed.
    ~Applet();

    /// What the exported functions take; null, or null in its location, after close().
    QuillonHandle handle() const { return handle_; }
    const Functions& functions() const { return library_.functions(); }
    const Library& library() const { return library_; }
    /// Frees the applet now and answers Fg_FreeGrabber's result; lets go of a borrowed one, with 0. Every later call
    /// answers InvalidHandle.
    int close();

    // Values, throwing -----------------------------------------------------------------------------------------------
    /// Writes `value`: a number, the name of an enumerator of the parameter ("FG_COL24"), or a text.
    /// Throws Refused with code, accepted values and reason; ValueError if the parameter takes no value of that type (a
    /// text for a number, 0.5 for a whole one, anything for a lookup table); ParameterError for an unknown name.
    void set(ParameterName parameter, const Value& value);
    /// Reads a number or a text. Throws ParameterError with the code; ValueError for a lookup table.
    Value get(ParameterName parameter) const;
    /// The same as a Type: a bool, a number or a std::string. Throws ValueError, too, if Type does not hold the value.
    template <typename Type>
    Type get(ParameterName parameter) const {
        return get(parameter).as<Type>();
    }
    /// The name of the enumerator that a parameter is set to, "FG_COL24"; empty where it is none.
    std::string enumerator(ParameterName parameter) const;
    /// A parameter to be read and written as a variable is.
    Setting operator[](ParameterName parameter);

    std::int32_t readInt(ParameterName parameter) const;
    std::uint32_t readUnsigned(ParameterName parameter) const;
    std::int64_t readInt64(ParameterName parameter) const;
    std::uint64_t readUnsigned64(ParameterName parameter) const;
    double readDouble(ParameterName parameter) const;
    std::string readText(ParameterName parameter) const;

    // Values, by code: that of the call, or InvalidParameter for an unknown name --------------------------------------
    // Numbers: a parameter of 64 bits takes the 32-bit forms, too, but no number takes a text's place.
    [[nodiscard]] int setInt(ParameterName parameter, std::int32_t value);
    [[nodiscard]] int setUnsigned(ParameterName parameter, std::uint32_t value);
    [[nodiscard]] int setInt64(ParameterName parameter, std::int64_t value);
    [[nodiscard]] int setUnsigned64(ParameterName parameter, std::uint64_t value);
    [[nodiscard]] int setDouble(ParameterName parameter, double value);
    [[nodiscard]] int setText(ParameterName parameter, const std::string& value);

    // A read that is refused leaves the value as it was; one of 64 bits may clear it.
    [[nodiscard]] int getInt(ParameterName parameter, std::int32_t& value) const;
    [[nodiscard]] int getUnsigned(ParameterName parameter, std::uint32_t& value) const;
    [[nodiscard]] int getInt64(ParameterName parameter, std::int64_t& value) const;
    [[nodiscard]] int getUnsigned64(ParameterName parameter, std::uint64_t& value) const;
    [[nodiscard]] int getDouble(ParameterName parameter, double& value) const;
    /// Reads a text as FgTypeString, copies it and releases it.
    [[nodiscard]] int getText(ParameterName parameter, std::string& value) const;

    // Lookup tables: runs of entries from `index`, and single entries ------------------------------------------------
    [[nodiscard]] int setField(ParameterName parameter, std::span<const std::uint32_t> values, std::uint32_t index = 0);
    [[nodiscard]] int getField(ParameterName parameter, std::span<std::uint32_t> values, std::uint32_t index = 0) const;
    [[nodiscard]] int setElement(ParameterName parameter, std::uint32_t index, std::uint32_t value);
    [[nodiscard]] int getElement(ParameterName parameter, std::uint32_t index, std::uint32_t& value) const;

    // Exactly as given: Fg_setParameterWithType, Fg_getParameterWithType, Fg_freeParameterStringWithType --------------
    int setWithType(int id, const void* value, unsigned dma, FgParamTypes type);
    int getWithType(int id, void* value, unsigned dma, FgParamTypes type) const;
    int freeText(int id, void* value, unsigned dma = 0, FgParamTypes type = FgTypeString) const;

    // Tables ---------------------------------------------------------------------------------------------------------
    int lastError() const;
    int parameterCount() const;
    /// The id of a name, or a negative code. Finds the names of registers, not those of the SDK's own parameters.
    int parameterId(const std::string& name) const;
    int parameterIdAt(int position) const;
    std::optional<std::string> parameterNameAt(int position) const;
    /// What FG_PARAM_DESCR answers, in Latin-1; "-" for an unknown name. Throws ParameterError.
    std::string readDescription(const std::string& name) const;

    std::uint64_t eventMask(const std::string& name) const;  ///< 0 for an unknown name
    std::optional<std::string> eventName(std::uint64_t mask) const;
    /// All events that have a name, by rising mask.
    std::vector<std::pair<std::uint64_t, std::string>> events() const;

    // Description ----------------------------------------------------------------------------------------------------
    /// The trees of all parameter records, in the order of the list: the newest top-level group first. Empty where the
    /// applet has none, and for a port that it does not have.
    std::vector<ParameterRecord> parameterInfo(int port = 0) const;
    /// What the applet tells of one parameter now: range, step, unit, enumerators, access. Nothing for one that it does
    /// not describe.
    std::optional<ParameterRecord> record(ParameterName parameter) const;
    /// The GenApi description; throws CallError.
    std::string xml(int port = 0) const;

    // Files ----------------------------------------------------------------------------------------------------------
    /// Writes what is set to a file whose name ends in ".mcf".
    [[nodiscard]] int saveConfig(const std::filesystem::path& file) const;
    /// Sets what such a file says; refusals of single values are not told.
    [[nodiscard]] int loadConfig(const std::filesystem::path& file);

    // Forwarded to the SDK -------------------------------------------------------------------------------------------
    int appletId(void* argument);
    /// Starts an acquisition of `pictures` pictures (-1: without end) into the SDK's memory.
    [[nodiscard]] int acquire(unsigned dma, std::int64_t pictures, unsigned flags, void* memory);
    int stopAcquire(unsigned dma, void* memory, unsigned flags);
    std::int64_t status(unsigned parameter, std::int64_t data, unsigned dma, void* memory);
    /// The number of the latest picture, or a negative code.
    std::int64_t lastPicture(unsigned dma, void* memory);
    /// The same when `picture` has come; waits `timeout` seconds at most.
    std::int64_t lastPictureBlocking(std::int64_t picture, unsigned dma, unsigned timeout, void* memory);

    // Shading, which this applet answers as not implemented ----------------------------------------------------------
    ShadingMaster* allocateShading(int set, int mode);
    int freeShading(ShadingMaster* shading);
    int setSubtractLine(ShadingMaster* shading, int x, int channel, float value);
    int setMultiplyLine(ShadingMaster* shading, int x, int channel, float value);
    int setFixedPatternNoiseLine(ShadingMaster* shading, int x, int channel, int on);
    int maxLine(ShadingMaster* shading);
    int shadingAccess(ShadingMaster* shading);
    int freeShadingAccess(ShadingMaster* shading);
    int writeActiveLine(ShadingMaster* shading, int line);

private:
    Applet(const Library& library, QuillonHandle handle, Ownership ownership);
    int idOf(ParameterName parameter) const;
    /// Throws ParameterError for a name that is none.
    int requireId(const char* function, ParameterName parameter) const;
    std::string nameOf(int id) const;
    int setValue(int id, const Value& value);
    template <typename Narrow>
    int setNarrow(ParameterName parameter, Narrow value, FgParamTypes type);
    template <typename Narrow>
    int getNarrow(ParameterName parameter, Narrow& value, FgParamTypes type) const;

    Library library_;
    std::unique_ptr<QuillonWrapper*> location_;  ///< of an applet that was opened here
    QuillonHandle handle_;                       ///< null in a moved-from object
    Ownership ownership_;
};

/// A parameter of an applet, to be read and written as a variable is. It must not outlive the applet, nor the name that
/// it was made of.
class QUILLON_CLIENT_API Setting {
public:
    Setting(Applet& applet, ParameterName parameter) : applet_(applet), parameter_(parameter) {}

    /// Applet::set.
    Setting& operator=(const Value& value) {
        applet_.set(parameter_, value);
        return *this;
    }
    /// Applet::get as a bool, a number or a std::string.
    template <typename Type>
    requires std::is_arithmetic_v<Type> || std::same_as<Type, std::string>
    operator Type() const { return applet_.get<Type>(parameter_); }

private:
    Applet& applet_;
    ParameterName parameter_;
};

inline Setting Applet::operator[](ParameterName parameter) {
    return Setting(*this, parameter);
}

}  // namespace quillon::client
