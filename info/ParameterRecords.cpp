#include "info/ParameterRecords.h"

#include "quillon/LiveField.h"

namespace quillon {

RegisterInfo* ParameterRecords::find(int id) const {
    const auto process = recordsById_.find(PublicProcess);
    if (process == recordsById_.end()) {
        return nullptr;
    }
    const auto record = process->second.find(id);
    return record == process->second.end() ? nullptr : record->second;
}

void ParameterRecords::setMaximum(int id, std::uint32_t maximum) {
    RegisterInfo* record = find(id);
    if (record != nullptr && record->type == RegisterTypeUInt) {
        storeLive(record->as.uint.max, maximum);
    }
}

void ParameterRecords::setMaximum(int id, double maximum) {
    RegisterInfo* record = find(id);
    if (record != nullptr && record->type == RegisterTypeDouble) {
        storeLive(record->as.real.max, maximum);
    }
}

void ParameterRecords::setAccessFlags(int id, int flags) {
    RegisterInfo* record = find(id);
    if (record != nullptr) {
        storeLive(record->accessFlags, flags);
    }
}

int ParameterRecords::accessFlags(int id) const {
    const RegisterInfo* record = find(id);
    return record == nullptr ? 0 : loadLive(record->accessFlags);
}

}  // namespace quillon
