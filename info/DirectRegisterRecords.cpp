#include "info/DirectRegisterRecords.h"

#include <cstdint>
#include <limits>

namespace quillon {

namespace {

std::uint64_t largestValue(int bits) {
    if (bits >= std::numeric_limits<std::uint64_t>::digits) {
        return std::numeric_limits<std::uint64_t>::max();
    }
    return bits > 0 ? (std::uint64_t{1} << bits) - 1 : 0;
}

}  // namespace

void addDirectRegisterRecords(Fg_ParameterInfo& info, RegisterInfoById& recordsById,
                              const std::vector<DesignRegister>& registers) {
    RegisterInfo* group = info.addGroupInfo(0, nullptr, DirectRegisterGroupLabel);
    if (group == nullptr) {
        return;
    }
    for (const DesignRegister& designRegister : registers) {
        const std::string symbol = DirectRegisterPrefix + designRegister.name;
        const std::string label = designRegister.name + " (" + std::to_string(designRegister.bits) + ")";
        const int id = designRegister.number + FG_REGISTER_IDS;
        const int accessFlags = designRegister.direction == 0 ? ReadOnlyAccess : OpenAccess;
        const std::uint64_t maximum = largestValue(designRegister.bits);
        recordsById[PublicProcess][id] =
            designRegister.bits <= RegisterWordBits
                ? info.addInfoUInt(group, label.c_str(), symbol.c_str(), 0, static_cast<std::uint32_t>(maximum), 1,
                                   accessFlags, 1, 1, nullptr, id, 0)
                : info.addInfoUInt64(group, label.c_str(), symbol.c_str(), 0, maximum, 1, accessFlags, 1, 1, nullptr,
                                     id, 0);
    }
}

}  // namespace quillon
