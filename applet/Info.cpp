// What the applet is, by numeric key. The keys are the SDK's; the answers depend on no state but the process-wide
// device and design.

#include <string>

#include "applet/Exports.h"
#include "applet/Images.h"
#include "engine/AppletProperties.h"
#include "quillon/Enumerators.h"
#include "support/Failure.h"

using namespace quillon;

namespace {

constexpr const char* DesignIdentifier = "5525b60f-1373-9674-c4da-fd24a026a8af";
constexpr const char* AppletIdentifier = "46db68ee-4ee2-4c5f-9345-256a3fc92321";
constexpr const char* Description =
    "Acquisition Applet with support of FastDMA technology, 16 bit image processing (per color component), white "
    "balancing and "
    "lookup table(up to 14 Bit) for one CameraLinkHS RGB line scan camera with 2 ports (20 Gbps).";
constexpr const char* Category = "Marlets:Line";
constexpr const char* Tags =
    "class=standard,family=acquisition,type=single,sensortype=line,color=rgb,interface=clhs,lag=2";
constexpr const char* Version = "2.1.2.4";
constexpr const char* VersionWithDate = "2.1.2.4.20190911.094158";

/// Stores `answer` in a result slot; a null slot is skipped.
template <class Answer>
void store(void* slot, Answer answer) {
    if (slot != nullptr) {
        *static_cast<Answer*>(slot) = answer;
    }
}

int storeText(void* slot, const char* text) {
    store(slot, text);
    return Success;
}

int storeImage(void* sizeSlot, void* dataSlot, std::size_t size, const unsigned char* data) {
    store(sizeSlot, std::uint64_t{size});
    store(dataSlot, data);
    return Success;
}

/// The value of an enumerator, or InvalidParameter for a name that is none.
int enumeratorValue(const char* name) {
    const NamedEnumerator* const found = name != nullptr ? findEnumerator(name) : nullptr;
    return found != nullptr ? found->value : int{InvalidParameter};
}

}  // namespace

int Info(int key, int arg1, int arg2, void* in, void* out) {
    switch (key) {
        case 848:
        case 1045:
        case 1792:
        case 1872:
        case 1888:
        case 2064: return 1;
        case QuillonInfoProcesses: return NumberOfProcesses;
        case 1040:
        case 2160:
        case 2192:
        case 2560:
        case 2816:
        case 3072:
        case 3328: return 0;
        case QuillonInfoInterfaceVersion: return 131073;
        case QuillonInfoBoardType: return BoardType;
        case 4624:
        case 4640:
        case 4688: return arg1 == 0 ? 1 : InvalidParameter;
        case 4704: return arg1 == 0 ? 10 : InvalidParameter;
        case 4656:
        case 4672: return arg1 == 0 && arg2 == 0 ? 0 : InvalidParameter;
        case QuillonInfoIcon:
            if (arg1 != 0 || arg2 != 0) {
                // There is one icon only; an index clears the slots, and they are filled all the same.
                store(in, std::uint64_t{0});
                store(out, static_cast<const unsigned char*>(nullptr));
            }
            return storeImage(in, out, IconSize, icon());
        case QuillonInfoDesignImage: return storeImage(in, out, DesignImageSize, designImage());
        case QuillonInfoDesignIdentifier: return storeText(out, DesignIdentifier);
        case QuillonInfoSecondDesignIdentifier: return storeText(out, AppletIdentifier);
        case 2304: store(in, std::int32_t{0}); return Success;
        case QuillonInfoDescription: return storeText(out, Description);
        case QuillonInfoCategory: return storeText(out, Category);
        case QuillonInfoTags: return storeText(out, Tags);
        case QuillonInfoDevice: store(in, FgIxWrapper::accessDeviceHandle(nullptr)); return Success;
        case QuillonInfoDesign: store(in, FgIxWrapper::accessDesignHandle(nullptr)); return Success;
        case QuillonInfoName: return storeText(out, AppletName);
        case QuillonInfoVersion: return storeText(out, Version);
        case QuillonInfoVersionWithDate: return storeText(out, VersionWithDate);
        case QuillonInfoEnumerator: return enumeratorValue(static_cast<const char*>(in));
        default: return NotImplemented;
    }
}
