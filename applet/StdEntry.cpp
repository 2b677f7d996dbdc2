// The start of a wrapper, in its binding order.

#include <cstdlib>
#include <memory>

#include "applet/Exports.h"
#include "applet/Images.h"
#include "engine/AppletProperties.h"
#include "support/Failure.h"
#include "wrapper/DesignLoader.h"

using namespace quillon;

namespace {

constexpr const char* SdkLibrary = "libfglib5.so";
constexpr int LoadMode = 1;
constexpr int SlaveFlag = 1;  ///< another wrapper drives the design: leave it as it is

fpga_design* loadDesign() {
    // The variable's value plays no part, and an empty one counts.
    if (std::getenv("__ORLO_FORCE_EXTERNAL_TAV") != nullptr) {
        return TavLoadTavFileWithType(DesignFileName, BoardType, LoadMode);
    }
    return TavLoadDesignFromBuffer(designImage(), DesignImageSize, LoadMode);
}

}  // namespace

QuillonWrapper* Std_entry(IXdevice* device, int* status, int flags) {
    int unasked = Success;
    int& result = status != nullptr ? *status : unasked;

    auto wrapper = std::make_unique<FgIxWrapperImpl>();
    result = wrapper->initializeDllFunctions(SdkLibrary);
    if (result != Success) {
        return nullptr;
    }
    fpga_design* design = loadDesign();
    if (design == nullptr) {
        result = DesignNotLoaded;
        // Settled behaviour of this one failure: the wrapper and the opened library are left behind.
        static_cast<void>(wrapper.release());
        return nullptr;
    }
    result = wrapper->runFgInit(DesignFileName, device, design, flags);
    if (result != Success) {
        TavUnloadTavFile(design);
        return nullptr;
    }
    // From here on an exception leaves the wrapper behind: the SDK has its handle.
    FgIxWrapperImpl* const ready = wrapper.release();
    ready->initHandles(device, design);
    ready->buildNameTables();
    ready->lookUpDesignParameters();
    ready->buildParameterCatalogue();
    ready->setUpDesignTables();
    if ((flags & SlaveFlag) == 0) {
        ready->pushDefaultState();
    }
    return asHeldByHost(ready);
}
