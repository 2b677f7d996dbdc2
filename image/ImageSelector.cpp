#include "image/ImageSelector.h"

#include "design/HandlerFrame.h"

namespace quillon {

void ImageSelector::setImageSelectPeriod(std::int32_t value, bool reportErrors) {
    changeField(
        selector_.imageSelectPeriod, value, reportErrors, [&] { requireRange(value, 1, 256); },
        [&](std::int32_t /*previous*/) {
            require(std::int64_t{value} > std::int64_t{selector_.imageSelect}, ValueOutOfRange);
            design_.writeUnsigned(Ix::ImageSelector_FG_IMG_SELECT_PERIOD_Divisor, static_cast<std::uint32_t>(value));
        });
}

void ImageSelector::setImageSelect(std::uint32_t value, bool reportErrors) {
    changeField(
        selector_.imageSelect, value, reportErrors, [&] { requireRange(value, 0U, 255U); },
        [&](std::uint32_t /*previous*/) {
            require(std::int64_t{value} < std::int64_t{selector_.imageSelectPeriod}, ValueOutOfRange);
            design_.writeUnsigned(Ix::ImageSelector_FG_IMG_SELECT_PHASE_Number, value);
        });
}

}  // namespace quillon
