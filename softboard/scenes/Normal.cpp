#include "softboard/scenes/Normal.h"

#include <boost/math/special_functions/erf.hpp>
#include <memory>
#include <numbers>

namespace softboard::scenes {

namespace {

std::unique_ptr<const NormalTable> makeTable() {
    auto table = std::make_unique<NormalTable>();
    for (std::size_t i = 0; i < table->size() / 2; ++i) {
        const double probability = (static_cast<double>(i) + 0.5) / static_cast<double>(table->size());
        const auto value = static_cast<float>(std::numbers::sqrt2 * boost::math::erfc_inv(2 * probability));
        (*table)[i] = -value;
        (*table)[table->size() - 1 - i] = value;
    }
    return table;
}

}  // namespace

const NormalTable& normalTable() {
    static const std::unique_ptr<const NormalTable> table = makeTable();
    return *table;
}

}  // namespace softboard::scenes
