#include "image/ImageSelector.h"

#include "design/HandlerFrame.h"

namespace quillon {

namespace {
constexpr std::int32_t MaxPeriod = 256;  // images; the last of them has number 255
}

void ImageSelector::setImageSelectPeriod(std::int32_t value, bool reportErrors) {
    changeField(
        selector_.imageSelectPeriod, value, reportErrors, [&] { requireRange(value, 1, MaxPeriod); },
        [&](std::int32_t /*previous*/) {
            require(std::int64_t{value} > std::int64_t{selector_.imageSelect}, ValueOutOfRange);
            design_.writeUnsigned(Ix::ImageSelector_FG_IMG_SELECT_PERIOD_Divisor, static_cast<std::uint32_t>(value));
        });
}

void ImageSelector::setImageSelect(std::uint32_t value, bool reportErrors) {
    changeField(
        selector_.imageSelect, value, reportErrors, [&] { requireRange<std::uint32_t>(value, 0, MaxPeriod - 1); },
        [&](std::uint32_t /*previous*/) {
            require(std::int64_t{value} < std::int64_t{selector_.imageSelectPeriod}, ValueOutOfRange);
            design_.writeUnsigned(Ix::ImageSelector_FG_IMG_SELECT_PHASE_Number, value);
        });
}

}  // namespace quillon
