#include "engine/FgIxWrapperImpl.h"

#include <cstring>
#include <stdexcept>

#include "engine/AppletProperties.h"
#include "info/Catalogue.h"
#include "info/DirectRegisterRecords.h"
#include "quillon/PublicParameters.h"
#include "support/EnvironmentSwitch.h"
#include "support/FgError.h"
#include "wrapper/BoardAccess.h"
#include "wrapper/DesignLoader.h"

namespace quillon {

using orlo::templates::platform::CriticalSectionGuard;
using orlo::tools::logging::Logger;

namespace {

constexpr int RecordLists = 1;

}  // namespace

FgIxWrapperImpl::FgIxWrapperImpl()
    : FgIxWrapper(RecordLists),
      tables_(*this),
      design_(*this),
      records_(registerInfoById),
      subjects_(state_, design_, records_, *this) {
    directRegisterAccess = environmentSwitch("ORLO_ENABLE_DRA");
}

FgIxWrapperImpl::~FgIxWrapperImpl() = default;

Logger& FgIxWrapperImpl::logger() {
    return cachedLogger(implLogger_, "orlo.wrapper.Quillon");
}

int FgIxWrapperImpl::processChannelToDma() {
    throw std::runtime_error("processChannelToDma() is not implemented.");
}

int FgIxWrapperImpl::mapDmaToFormat() {
    throw std::runtime_error("mapDmaToFormat() is not implemented.");
}

int FgIxWrapperImpl::setDmaAlignment() {
    throw std::runtime_error("setDmaAlignment() is not implemented.");
}

int FgIxWrapperImpl::getDmaAlignment() {
    throw std::runtime_error("getDmaAlignment() is not implemented.");
}

const char* FgIxWrapperImpl::vendorName() const {
    return VendorName;
}

const char* FgIxWrapperImpl::appletName() const {
    return AppletName;
}

const char* FgIxWrapperImpl::versionText() const {
    return WrapperVersion;
}

int FgIxWrapperImpl::appletIdForSaving() const {
    return 0;
}

// Start-up

void FgIxWrapperImpl::buildNameTables() {
    processMap[0] = 0;
    tables_.fill();
}

void FgIxWrapperImpl::lookUpDesignParameters() {
    design_.lookUpIds();
}

void FgIxWrapperImpl::setUpDesignTables() {
    subjects_.debug.buildDebugTable();
    subjects_.outputFormat.buildOutputFormatTable();
    subjects_.simulator.initialize();
}

void FgIxWrapperImpl::buildParameterCatalogue() {
    CatalogueExtensions extensions;
    extensions.directRegisterAccess = directRegisterAccess;
    if (directRegisterAccess) {
        forEachRegister(designHandle(), [&](const char* name) {
            const int number = TavGetRegisterByName(designHandle(), name);
            extensions.registers.push_back({name, number, TavGetRegisterBitRange(designHandle(), number),
                                            TavGetRegisterDirection(designHandle(), number)});
        });
    }
    extensions.unwrappedIdByName = tables_.unwrappedIdByName();
    if (!extensions.unwrappedIdByName.empty()) {
        extensions.unwrappedHead = getUnwrappedParameterInfo();
    }
    buildCatalogue(parameterInfo(), registerInfoById, extensions);
}

// Dispatch

/// Runs `access` under the parameter lock, records its code as last error and returns it.
template <class Access>
int FgIxWrapperImpl::dispatch(const void* value, Access&& access) {
    if (value == nullptr) {
        setError(InvalidParameter);
        return InvalidParameter;
    }
    const CriticalSectionGuard guard(parameterLock);
    const int code = access();
    setError(code);
    return code;
}

int FgIxWrapperImpl::getParameter(int id, void* value, unsigned dma, FgParamTypes type) {
    return dispatch(value, [&]() -> int {
        if (id > FG_SDK_IDS) {
            return getUnwrappedParameterWithType(id - FG_SDK_IDS, value, static_cast<int>(dma), type);
        }
        if (directRegisterAccess && id > FG_REGISTER_IDS) {
            return readRegister(id - FG_REGISTER_IDS, value);
        }
        try {
            getOnProcess0(id, value, dma, type);
        } catch (int code) {
            return code;
        }
        return Success;
    });
}

int FgIxWrapperImpl::setParameter(int id, const void* value, unsigned dma, FgParamTypes type) {
    return dispatch(value, [&]() -> int {
        if (id > FG_SDK_IDS) {
            return setUnwrappedParameterWithType(id - FG_SDK_IDS, value, static_cast<int>(dma), type);
        }
        if (directRegisterAccess && id > FG_REGISTER_IDS) {
            return writeRegister(id - FG_REGISTER_IDS, value);
        }
        try {
            requireProcess(dma, id, "set");
            setOnProcess0(id, value, type);
        } catch (int code) {
            return code;
        }
        return Success;
    });
}

int FgIxWrapperImpl::readRegister(int number, void* value) const {
    std::uint64_t word = 0;
    const int code = OrloRegisterRead(boardHandle(), number, &word);
    if (code != Success) {
        return code;
    }
    const bool wide = TavGetRegisterBitRange(designHandle(), number) > RegisterWordBits;
    const auto low = static_cast<std::uint32_t>(word);
    std::memcpy(value, wide ? static_cast<const void*>(&word) : &low, wide ? sizeof word : sizeof low);
    return Success;
}

int FgIxWrapperImpl::writeRegister(int number, const void* value) const {
    std::uint64_t word = 0;
    if (TavGetRegisterBitRange(designHandle(), number) > RegisterWordBits) {
        std::memcpy(&word, value, sizeof word);
    } else {
        std::uint32_t low = 0;
        std::memcpy(&low, value, sizeof low);
        word = low;
    }
    return OrloRegisterWrite(boardHandle(), number, word);
}

/// Fails unless `dma` is of process 0, the only one that this design has.
void FgIxWrapperImpl::requireProcess(unsigned dma, int id, const char* verb) {
    const auto found = processMap.find(static_cast<int>(dma));
    require(found != processMap.end(), InvalidParameter);
    if (const int process = found->second; process != 0) {
        logMessage(orlo::tools::logging::UnresolvedLevel, [verb, id, process](std::ostream& line) {
            line << "trying to " << verb << " SDK parameter '" << id << "' on unknown process " << process << "!";
        });
        fail(InvalidParameter);
    }
}

void FgIxWrapperImpl::refuseWrite(int id) {
    const PublicParameter* const parameter = findPublicParameter(id);
    if (parameter == nullptr || parameter->access != ParameterAccess::ReadOnly) {
        refuseUnknown("set", id);
    }
    logMessage(orlo::tools::logging::UnresolvedLevel, [parameter](std::ostream& line) {
        line << "trying to set read-only SDK parameter '" << parameter->name << "' on process 0!";
    });
    fail(NotAvailable);
}

void FgIxWrapperImpl::refuseUnknown(const char* verb, int id) {
    logMessage(orlo::tools::logging::UnresolvedLevel, [verb, id](std::ostream& line) {
        line << "trying to " << verb << " unknown SDK parameter '" << id << "' on process 0!";
    });
    fail(InvalidParameter);
}

int FgIxWrapperImpl::freeParameterString(int id, void* value, unsigned dma, FgParamTypes type) {
    if (id > FG_SDK_IDS) {
        const int result = freeUnwrappedParameterString(id - FG_SDK_IDS, value, static_cast<int>(dma), type);
        setError(result);
        return result;
    }
    const auto process = processMap.find(static_cast<int>(dma));
    require(process != processMap.end(), InvalidParameter);
    if (process->second == 0) {
        switch (id) {
            case FG_APC_STOP_TIMEOUT:
            case FG_NR_OF_DMAS:
            case FG_NR_OF_CAMS:
            case FG_NR_OF_PROCESSES:
            case FG_DMA_PORT:
            case FG_CAM_PORT:
            case FG_TRANSFER_LEN: return freeUnwrappedParameterString(id, value, static_cast<int>(dma), type);
            default: break;
        }
    }
    if (!outstandingStrings.takeBack(value)) {
        setError(InvalidParameter);
        return InvalidParameter;
    }
    return Success;
}

// Names and events

int FgIxWrapperImpl::Fg_getParameterIdByName(const char* name) {
    const auto& ids = tables_.parameterIdByName();
    const auto found = name != nullptr ? ids.find(name) : ids.end();
    setError(found != ids.end() ? Success : InvalidParameter);
    return found != ids.end() ? found->second : int{InvalidParameter};
}

const char* FgIxWrapperImpl::Fg_getParameterName(int index) {
    const auto found = tables_.parameterNameByIndex().find(index);
    const bool exists = found != tables_.parameterNameByIndex().end();
    setError(exists ? Success : InvalidParameter);
    return exists ? found->second.c_str() : nullptr;
}

int FgIxWrapperImpl::Fg_getParameterId(int index) {
    return Fg_getParameterIdByName(Fg_getParameterName(index));
}

int FgIxWrapperImpl::Fg_getNrOfParameter() {
    return static_cast<int>(tables_.parameterNameByIndex().size());
}

std::uint64_t FgIxWrapperImpl::Fg_getEventMask(const char* name) {
    const auto& masks = tables_.eventMaskByName();
    const auto found = name != nullptr ? masks.find(name) : masks.end();
    setError(found != masks.end() ? Success : InvalidParameter);
    return found != masks.end() ? found->second : 0;
}

const char* FgIxWrapperImpl::Fg_getEventName(unsigned long mask) {
    const auto found = tables_.eventNameByMask().find(mask);
    const bool exists = found != tables_.eventNameByMask().end();
    setError(exists ? Success : InvalidParameter);
    return exists ? found->second.c_str() : nullptr;
}

}  // namespace quillon
