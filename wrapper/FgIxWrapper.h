/// @file
/// The base of every applet wrapper: what does not depend on the design.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "info/ParameterRecords.h"
#include "support/Logger.h"
#include "wrapper/SdkFunctionTable.h"
#include "wrapper/SdkTypes.h"

namespace quillon {

class Fg_ConfigFileParser;
class Fg_Error;
class Fg_ParameterInfo;
struct FgIxWrapperPrivate;

inline constexpr int OnlyPort = 0;                          ///< the camera port that a configuration tells of
inline constexpr std::size_t ConfigurationTextSize = 1024;  ///< room for a text of a configuration

/// Links the SDK library, holds the handles of board, design and SDK, the descriptions of the parameters and the last
/// error, and forwards to the SDK. Nothing in here locks.
class FgIxWrapper {
public:
    /// `lists` is the number of independent lists of parameter records.
    explicit FgIxWrapper(int lists);
    FgIxWrapper(const FgIxWrapper&) = delete;
    FgIxWrapper& operator=(const FgIxWrapper&) = delete;

    // The virtual operations keep this order: it is that of the virtual table.
    virtual orlo::tools::logging::Logger& logger();
    virtual bool loadState(Fg_ConfigFileParser* parser) = 0;
    virtual void saveState(Fg_ConfigFileParser* parser) = 0;
    virtual int processChannelToDma() = 0;
    virtual int mapDmaToFormat() = 0;
    virtual int setDmaAlignment() = 0;
    virtual int getDmaAlignment() = 0;
    /// Closes the SDK library, unloads the design and releases everything else.
    virtual ~FgIxWrapper();
    virtual void buildParameterCatalogue() = 0;
    virtual int setParameter(int id, const void* value, unsigned dma, FgParamTypes type) = 0;
    virtual int getParameter(int id, void* value, unsigned dma, FgParamTypes type) = 0;
    virtual int freeParameterString(int id, void* value, unsigned dma, FgParamTypes type) = 0;
    virtual int Fg_getParameterIdByName(const char* name) = 0;
    virtual const char* Fg_getParameterName(int index) = 0;
    virtual int Fg_getParameterId(int index) = 0;
    virtual int Fg_getNrOfParameter() = 0;
    /// Writes the state to the `.mcf` file `fileName`: 0, or FileNotWritten.
    virtual int Fg_saveConfig(Fg_Struct_s* fg, const char* fileName);
    /// Loads the state from the `.mcf` file `fileName`: 0, FileNotFound (the last error is ConfigurationUnreadable
    /// then) or ConfigurationUnreadable.
    virtual int Fg_loadConfig(Fg_Struct_s* fg, const char* fileName);
    /// The GenApi description of list `port`. With a null buffer the needed size, terminator included, is stored in
    /// `*size`. InvalidParameter without a place for the size, ValueNotInList for a list that is empty, BufferTooSmall.
    virtual int Fg_getParameterInfoXML(Fg_Struct_s* fg, int port, char* buffer, unsigned long* size);
    virtual ShadingMaster* Fg_AllocShading(int, int);
    virtual int Fg_FreeShading(ShadingMaster*);
    virtual int Shad_SetSubValueLine(ShadingMaster*, int, int, float);
    virtual int Shad_SetMultValueLine(ShadingMaster*, int, int, float);
    virtual int Shad_SetFixedPatternNoiseLine(ShadingMaster*, int, int, int);
    virtual int Shad_GetMaxLine(ShadingMaster*);
    virtual int Shad_GetAccess(ShadingMaster*);
    virtual int Shad_FreeAccess(ShadingMaster*);
    virtual int Shad_WriteActLine(ShadingMaster*, int);
    /// The mask of the design's event of that name, 0 if there is none.
    virtual std::uint64_t Fg_getEventMask(const char* name);
    virtual const char* Fg_getEventName(unsigned long mask);
    virtual const char* vendorName() const = 0;
    virtual const char* appletName() const = 0;
    virtual const char* versionText() const = 0;
    virtual int appletIdForSaving() const = 0;

    /// Opens the SDK library `name` and resolves its functions: 0, or InternalFailure if there is no such library. A
    /// missing function stays null.
    int initializeDllFunctions(const char* name);
    /// Hands the design to the SDK under the name `name`: 0, or InternalFailure if the SDK has no function for it, or
    /// the SDK's last error.
    int runFgInit(const char* name, IXdevice* device, fpga_design* design, int flags);
    /// From here on the wrapper owns the design.
    void initHandles(IXdevice* device, fpga_design* design);

    const SdkFunctionTable& wrapperFg() const;
    Fg_Struct_s* fglibFg() const;
    IXdevice* boardHandle() const;
    fpga_design* designHandle() const;
    Fg_Error& fgError();
    Fg_ParameterInfo& parameterInfo();
    void setError(int code);
    int Fg_getLastErrorNumber();
    /// The SDK's last error, or NotAvailable.
    int Fg_getLastErrorNumberIx() const;

    /// The device and design behind Info, one of each for the process: stores a non-null argument, and returns what is
    /// stored.
    static IXdevice* accessDeviceHandle(IXdevice* device);
    static fpga_design* accessDesignHandle(fpga_design* design);

    // The SDK's own parameters, by the SDK's ids. NotAvailable, or null, where the SDK lacks the function.
    int getUnwrappedParameterWithType(int id, void* value, int dma, FgParamTypes type) const;
    int setUnwrappedParameterWithType(int id, const void* value, int dma, FgParamTypes type) const;
    int freeUnwrappedParameterString(int id, void* value, int dma, FgParamTypes type) const;
    int getUnwrappedParameter(int id, void* value, int dma) const;
    int setUnwrappedParameter(int id, const void* value, int dma) const;
    RegisterInfo* getUnwrappedParameterInfo() const;
    int getParameterIdByName(const char* name) const;

    /// The first record of list `port`, or null.
    RegisterInfo* Fg_getParameterInfo(int port);

    // Copy between a table and a record. The caller has tested the bounds; a null record does nothing.
    static void setFieldCache(void* cache, const FieldParameterInt_s* record);
    static void setFieldCache(void* cache, const FieldParameterDouble_s* record);
    static void setFieldCache(void* cache, const FieldParameterAccess* record);
    static void getFieldCache(const void* cache, FieldParameterInt_s* record);
    static void getFieldCache(const void* cache, FieldParameterDouble_s* record);
    static void getFieldCache(const void* cache, const FieldParameterAccess* record);

    /// Writes a line through this object's logger: see orlo::tools::logging::writeMessage.
    template <class Describe>
    void logMessage(int level, Describe&& describe) {
        orlo::tools::logging::writeMessage(logger(), level, describe);
    }

private:
    /// Calls the SDK's function `entry` with the SDK's handle before the arguments.
    template <class Result, class... Parameters, class... Arguments>
    Result callSdk(Result (*SdkFunctionTable::*entry)(Fg_Struct_s*, Parameters...), Arguments... arguments) const;

    std::atomic<orlo::tools::logging::Logger*> logger_{nullptr};
    std::unique_ptr<FgIxWrapperPrivate> private_;

protected:
    /// The logger `name`, found once and kept in `cache`.
    static orlo::tools::logging::Logger& cachedLogger(std::atomic<orlo::tools::logging::Logger*>& cache,
                                                      const char* name);

    /// Process number to parameter id to record; the records belong to parameterInfo().
    RegisterInfoById registerInfoById;

public:
    /// Whether ids above FG_REGISTER_IDS reach registers of the design.
    bool directRegisterAccess = false;
};

}  // namespace quillon
