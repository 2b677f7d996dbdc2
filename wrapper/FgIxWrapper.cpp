#include "wrapper/FgIxWrapper.h"

#include <dlfcn.h>

#include <cstring>
#include <string>

#include "info/ParameterInfo.h"
#include "info/ParameterInfoBuilderXML.h"
#include "support/Failure.h"
#include "support/FgError.h"
#include "support/Logging.h"
#include "wrapper/DesignLoader.h"

namespace quillon {

using orlo::tools::logging::FailedCallLevel;
using orlo::tools::logging::LinkLevel;
using orlo::tools::logging::Logger;
using orlo::tools::logging::Logging;

struct FgIxWrapperPrivate {
    explicit FgIxWrapperPrivate(int lists) : parameterInfo(std::make_unique<Fg_ParameterInfo>(lists)) {}

    std::unique_ptr<SdkFunctionTable> functions = std::make_unique<SdkFunctionTable>();
    Fg_Struct_s* sdkHandle = nullptr;
    IXdevice* board = nullptr;
    fpga_design* design = nullptr;
    void* library = nullptr;
    Fg_Struct_s* (*initHandleSlaveAware)(const char*, IXdevice*, fpga_design*, int) = nullptr;
    Fg_Struct_s* (*initHandle)(const char*, IXdevice*, fpga_design*) = nullptr;
    int (*getParameterIdByName)(Fg_Struct_s*, const char*) = nullptr;
    int (*getLastErrorNumber)(Fg_Struct_s*) = nullptr;
    std::unique_ptr<Fg_ParameterInfo> parameterInfo;
    Fg_Error error;
};

namespace {

// Process-wide and guarded by nothing: what Info tells is what the last of several starts stored.
std::atomic<IXdevice*> currentDevice{nullptr};
std::atomic<fpga_design*> currentDesign{nullptr};

constexpr int EventLimit = 64;  // one bit of a mask each

/// Size of one element of a field access, 0 for a type that moves nothing.
std::size_t elementSize(FgParamTypes type) {
    switch (type) {
        case FgTypeInt32:
        case FgTypeUInt32: return 4;
        case FgTypeInt64:
        case FgTypeUInt64:
        case FgTypeDouble: return 8;
        default: return 0;
    }
}

/// Where element `index` of a table of elements of `size` bytes lies.
void* element(void* cache, std::uint32_t index, std::size_t size) {
    return static_cast<unsigned char*>(cache) + index * size;
}

const void* element(const void* cache, std::uint32_t index, std::size_t size) {
    return static_cast<const unsigned char*>(cache) + index * size;
}

}  // namespace

FgIxWrapper::FgIxWrapper(int lists) : private_(std::make_unique<FgIxWrapperPrivate>(lists)) {}

FgIxWrapper::~FgIxWrapper() {
    if (private_->library != nullptr) {
        dlclose(private_->library);
    }
    if (private_->design != nullptr) {
        TavUnloadTavFile(private_->design);
    }
}

Logger& FgIxWrapper::logger() {
    return cachedLogger(logger_, "orlo.wrapper.FgIxWrapper");
}

Logger& FgIxWrapper::cachedLogger(std::atomic<Logger*>& cache, const char* name) {
    Logger* found = cache;
    if (found == nullptr) {
        // Two threads may ask at once: both get the same logger.
        found = Logging::instance().getLogger(name);
        cache = found;
    }
    return *found;
}

int FgIxWrapper::initializeDllFunctions(const char* name) {
    private_->library = dlopen(name, RTLD_NOW | RTLD_DEEPBIND);
    if (private_->library == nullptr) {
        logMessage(LinkLevel, [name](std::ostream& line) { line << "error opening dll '" << name << "'"; });
        setError(InternalFailure);
        return InternalFailure;
    }
    private_->functions->resolve(private_->library);
    resolveFunction(private_->library, "Fg_getParameterIdByName", private_->getParameterIdByName);
    return Success;
}

int FgIxWrapper::runFgInit(const char* name, IXdevice* device, fpga_design* design, int flags) {
    FgIxWrapperPrivate& link = *private_;
    resolveFunction(link.library, "Fg_InitHandleSlaveAware", link.initHandleSlaveAware);
    resolveFunction(link.library, "Fg_InitHandle", link.initHandle);
    resolveFunction(link.library, "Fg_getLastErrorNumber", link.getLastErrorNumber);
    const char* used = nullptr;
    if (link.initHandleSlaveAware != nullptr) {
        used = "Fg_InitHandleSlaveAware";
        link.sdkHandle = link.initHandleSlaveAware(name, device, design, flags);
    } else if (link.initHandle != nullptr) {
        used = "Fg_InitHandle";
        link.sdkHandle = link.initHandle(name, device, design);
    } else {
        logMessage(LinkLevel, [](std::ostream& line) {
            line << "cannot resolve function 'Fg_InitHandle' and/or 'Fg_InitHandleSlaveAware'";
        });
        setError(InternalFailure);
        return InternalFailure;
    }
    if (link.sdkHandle != nullptr) {
        accessDeviceHandle(device);
        accessDesignHandle(design);
        return Success;
    }
    logMessage(FailedCallLevel, [used, name](std::ostream& line) {
        line << "error calling '" << used << "' (tavName = '" << name << "')";
    });
    const int code = link.getLastErrorNumber != nullptr ? link.getLastErrorNumber(nullptr) : DesignNotLoaded;
    setError(code);
    return code;
}

void FgIxWrapper::initHandles(IXdevice* device, fpga_design* design) {
    private_->board = device;
    private_->design = design;
}

const SdkFunctionTable& FgIxWrapper::wrapperFg() const {
    return *private_->functions;
}

Fg_Struct_s* FgIxWrapper::fglibFg() const {
    return private_->sdkHandle;
}

IXdevice* FgIxWrapper::boardHandle() const {
    return private_->board;
}

fpga_design* FgIxWrapper::designHandle() const {
    return private_->design;
}

template <class Result, class... Parameters, class... Arguments>
Result FgIxWrapper::callSdk(Result (*SdkFunctionTable::*entry)(Fg_Struct_s*, Parameters...),
                            Arguments... arguments) const {
    return callIfThere((*private_->functions).*entry, private_->sdkHandle, arguments...);
}

Fg_Error& FgIxWrapper::fgError() {
    return private_->error;
}

Fg_ParameterInfo& FgIxWrapper::parameterInfo() {
    return *private_->parameterInfo;
}

void FgIxWrapper::setError(int code) {
    private_->error.setErr(code);
}

int FgIxWrapper::Fg_getLastErrorNumber() {
    return private_->error.getErrorNumberBuffer();
}

int FgIxWrapper::Fg_getLastErrorNumberIx() const {
    return fglibFg() != nullptr ? callSdk(&SdkFunctionTable::Fg_getLastErrorNumber) : int{NotAvailable};
}

IXdevice* FgIxWrapper::accessDeviceHandle(IXdevice* device) {
    if (device != nullptr) {
        currentDevice = device;
    }
    return currentDevice;
}

fpga_design* FgIxWrapper::accessDesignHandle(fpga_design* design) {
    if (design != nullptr) {
        currentDesign = design;
    }
    return currentDesign;
}

int FgIxWrapper::getUnwrappedParameterWithType(int id, void* value, int dma, FgParamTypes type) const {
    return callSdk(&SdkFunctionTable::Fg_getParameterWithType, id, value, static_cast<unsigned>(dma), type);
}

int FgIxWrapper::setUnwrappedParameterWithType(int id, const void* value, int dma, FgParamTypes type) const {
    return callSdk(&SdkFunctionTable::Fg_setParameterWithType, id, value, static_cast<unsigned>(dma), type);
}

int FgIxWrapper::freeUnwrappedParameterString(int id, void* value, int dma, FgParamTypes type) const {
    return callSdk(&SdkFunctionTable::Fg_freeParameterStringWithType, id, value, static_cast<unsigned>(dma), type);
}

int FgIxWrapper::getUnwrappedParameter(int id, void* value, int dma) const {
    return callSdk(&SdkFunctionTable::Fg_getParameter, id, value, static_cast<unsigned>(dma));
}

int FgIxWrapper::setUnwrappedParameter(int id, const void* value, int dma) const {
    return callSdk(&SdkFunctionTable::Fg_setParameter, id, value, static_cast<unsigned>(dma));
}

RegisterInfo* FgIxWrapper::getUnwrappedParameterInfo() const {
    return callSdk(&SdkFunctionTable::Fg_getParameterInfo, 0);
}

int FgIxWrapper::getParameterIdByName(const char* name) const {
    return callIfThere(private_->getParameterIdByName, private_->sdkHandle, name);
}

RegisterInfo* FgIxWrapper::Fg_getParameterInfo(int port) {
    return parameterInfo().getRegisterInfo(port);
}

void FgIxWrapper::setFieldCache(void* cache, const FieldParameterInt_s* record) {
    if (record != nullptr) {
        std::memcpy(element(cache, record->index, sizeof record->value), &record->value, sizeof record->value);
    }
}

void FgIxWrapper::setFieldCache(void* cache, const FieldParameterDouble_s* record) {
    if (record != nullptr) {
        std::memcpy(element(cache, record->index, sizeof record->value), &record->value, sizeof record->value);
    }
}

void FgIxWrapper::setFieldCache(void* cache, const FieldParameterAccess* record) {
    if (record == nullptr) {
        return;
    }
    if (const std::size_t size = elementSize(record->vtype) * record->count; size != 0) {
        std::memcpy(element(cache, record->index, elementSize(record->vtype)), record->value, size);
    }
}

void FgIxWrapper::getFieldCache(const void* cache, FieldParameterInt_s* record) {
    if (record != nullptr) {
        std::memcpy(&record->value, element(cache, record->index, sizeof record->value), sizeof record->value);
    }
}

void FgIxWrapper::getFieldCache(const void* cache, FieldParameterDouble_s* record) {
    if (record != nullptr) {
        std::memcpy(&record->value, element(cache, record->index, sizeof record->value), sizeof record->value);
    }
}

void FgIxWrapper::getFieldCache(const void* cache, const FieldParameterAccess* record) {
    if (record == nullptr) {
        return;
    }
    if (const std::size_t size = elementSize(record->vtype) * record->count; size != 0) {
        std::memcpy(record->value, element(cache, record->index, elementSize(record->vtype)), size);
    }
}

int FgIxWrapper::Fg_getParameterInfoXML(Fg_Struct_s* /*fg*/, int port, char* buffer, unsigned long* size) {
    const auto refuse = [this](int code) {
        setError(code);
        return code;
    };
    if (size == nullptr) {
        return refuse(InvalidParameter);
    }
    if (*size == 0 && buffer != nullptr) {
        return refuse(BufferTooSmall);
    }
    if (Fg_getParameterInfo(port) == nullptr) {
        return refuse(ValueNotInList);
    }
    const std::string text =
        ParameterInfoBuilderXML(parameterInfo(), {vendorName(), appletName(), versionText()}, port).build();
    if (buffer != nullptr) {
        if (*size <= text.size()) {
            return refuse(BufferTooSmall);
        }
        std::strncpy(buffer, text.c_str(), *size);
    }
    *size = text.size() + 1;
    setError(Success);
    return Success;
}

ShadingMaster* FgIxWrapper::Fg_AllocShading(int /*unused*/, int /*unused*/) {
    return nullptr;
}

int FgIxWrapper::Fg_FreeShading(ShadingMaster* /*unused*/) {
    return NotImplemented;
}

int FgIxWrapper::Shad_SetSubValueLine(ShadingMaster* /*unused*/, int /*unused*/, int /*unused*/, float /*unused*/) {
    return NotImplemented;
}

int FgIxWrapper::Shad_SetMultValueLine(ShadingMaster* /*unused*/, int /*unused*/, int /*unused*/, float /*unused*/) {
    return NotImplemented;
}

int FgIxWrapper::Shad_SetFixedPatternNoiseLine(ShadingMaster* /*unused*/, int /*unused*/, int /*unused*/,
                                               int /*unused*/) {
    return NotImplemented;
}

int FgIxWrapper::Shad_GetMaxLine(ShadingMaster* /*unused*/) {
    return NotImplemented;
}

int FgIxWrapper::Shad_GetAccess(ShadingMaster* /*unused*/) {
    return NotImplemented;
}

int FgIxWrapper::Shad_FreeAccess(ShadingMaster* /*unused*/) {
    return NotImplemented;
}

int FgIxWrapper::Shad_WriteActLine(ShadingMaster* /*unused*/, int /*unused*/) {
    return NotImplemented;
}

std::uint64_t FgIxWrapper::Fg_getEventMask(const char* name) {
    for (int i = 0; name != nullptr && i < EventLimit; ++i) {
        if (hasName(designEvent(designHandle(), i), name)) {
            return std::uint64_t{1} << i;
        }
    }
    return 0;
}

const char* FgIxWrapper::Fg_getEventName(unsigned long mask) {
    for (int i = 0; i < EventLimit; ++i) {
        const TavEvent* event = designEvent(designHandle(), i);
        if (event != nullptr && mask == std::uint64_t{1} << i) {
            return event->name;
        }
    }
    return nullptr;
}

}  // namespace quillon
