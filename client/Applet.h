#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "client/Errors.h"
#include "client/Interface.h"
#include "client/Library.h"
#include "client/ParameterRecord.h"
#include "client/SoftBoard.h"

namespace quillon::client {

/// An open applet, from Std_entry to Fg_FreeGrabber: plays the part of the SDK, which owns the handle's location.
///
/// Functions that return `int` answer the applet's own code, 0 for success, and throw nothing of their own. Functions
/// whose names begin with "read", and those that say so, throw instead: ParameterError or CallError with the code.
/// Parameters are addressed by id (quillon/Vocabulary.h). Parameter calls may come from several threads at once;
/// moving and destroying must not race with any call.
class Applet {
public:
    /// Opens the applet on a board. With bit 0 of `flags` set the design is left as it is, else it gets the start-up
    /// state. Throws OpenError with the status that Std_entry stored.
    Applet(const Library& library, IXdevice* device, int flags = 0);
    Applet(const Library& library, SoftBoard& board, int flags = 0);
    Applet(Applet&&) noexcept = default;
    Applet& operator=(Applet&&) = delete;
    ~Applet();

    /// What the exported functions take; null in its location after close().
    QuillonHandle handle() const { return location_.get(); }
    const Functions& functions() const { return library_.functions(); }
    const Library& library() const { return library_; }
    /// Frees the applet now and answers Fg_FreeGrabber's result. Every later call answers "invalid handle".
    int close();

    // Values ---------------------------------------------------------------------------------------------------------
    int set(int id, const void* value, unsigned dma, FgParamTypes type);
    int get(int id, void* value, unsigned dma, FgParamTypes type);
    int freeText(int id, void* value, unsigned dma = 0, FgParamTypes type = FgTypeString);

    // Numbers. A parameter of 64 bits takes the 32-bit forms, too, but no number takes a text's place.
    int setInt(int id, std::int32_t value);
    int setUnsigned(int id, std::uint32_t value);
    int setInt64(int id, std::int64_t value);
    int setUnsigned64(int id, std::uint64_t value);
    int setDouble(int id, double value);
    int setText(int id, const std::string& value);

    int getInt(int id, std::int32_t& value);
    int getUnsigned(int id, std::uint32_t& value);
    int getInt64(int id, std::int64_t& value);
    int getUnsigned64(int id, std::uint64_t& value);
    int getDouble(int id, double& value);
    /// Reads a text as type 22, copies it and releases it.
    int getText(int id, std::string& value);

    std::int32_t readInt(int id);
    std::uint32_t readUnsigned(int id);
    std::int64_t readInt64(int id);
    std::uint64_t readUnsigned64(int id);
    double readDouble(int id);
    std::string readText(int id);

    // Lookup tables: runs of entries from `index`, and single entries ------------------------------------------------
    int setField(int id, std::span<const std::uint32_t> values, std::uint32_t index = 0);
    int getField(int id, std::span<std::uint32_t> values, std::uint32_t index = 0);
    int setElement(int id, std::uint32_t index, std::uint32_t value);
    int getElement(int id, std::uint32_t index, std::uint32_t& value);

    // Tables ---------------------------------------------------------------------------------------------------------
    int lastError() const;
    int parameterCount() const;
    /// The id of a name, or a negative code. Finds the names of registers, not those of the SDK's own parameters.
    int parameterId(const std::string& name) const;
    int parameterIdAt(int position) const;
    std::optional<std::string> parameterNameAt(int position) const;
    /// What FG_PARAM_DESCR answers, in Latin-1; "-" for an unknown name. Throws ParameterError.
    std::string readDescription(const std::string& name);

    std::uint64_t eventMask(const std::string& name) const;  ///< 0 for an unknown name
    std::optional<std::string> eventName(std::uint64_t mask) const;
    /// All events that have a name, by rising mask.
    std::vector<std::pair<std::uint64_t, std::string>> events() const;

    // Description ----------------------------------------------------------------------------------------------------
    /// The trees of all parameter records, in the order of the list: the newest top-level group first. Empty where the
    /// applet has none, and for a port that it does not have.
    std::vector<ParameterRecord> parameterInfo(int port = 0) const;
    /// The GenApi description; throws CallError.
    std::string xml(int port = 0) const;

    // Files ----------------------------------------------------------------------------------------------------------
    int saveConfig(const std::filesystem::path& file);
    int loadConfig(const std::filesystem::path& file);

    // Forwarded to the SDK -------------------------------------------------------------------------------------------
    int appletId(void* argument);
    int acquire(unsigned dma, std::int64_t pictures, unsigned flags, void* memory);
    int stopAcquire(unsigned dma, void* memory, unsigned flags);
    std::int64_t status(unsigned parameter, std::int64_t data, unsigned dma, void* memory);
    std::int64_t lastPicture(unsigned dma, void* memory);
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
    template <typename Narrow>
    int setNarrow(int id, Narrow value, FgParamTypes type);
    template <typename Narrow>
    int getNarrow(int id, Narrow& value, FgParamTypes type);

    Library library_;
    std::unique_ptr<QuillonWrapper*> location_;  ///< holds the wrapper; null in a moved-from object
};

}  // namespace quillon::client
