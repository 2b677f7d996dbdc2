/// @file
/// The names that the SDK and its tools ask for: parameters by position and by name, their descriptions, and the
/// events.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>

#include "engine/PropertyStore.h"
#include "quillon/PublicEvents.h"
#include "wrapper/FgIxWrapper.h"

namespace quillon {

/// Filled once at start-up; constant afterwards, and so free of locks.
class NameTables {
public:
    explicit NameTables(FgIxWrapper& wrapper) : wrapper_(wrapper) {}

    /// Enters the public names, with ORLO_ENABLE_DRA the design's registers, with ORLO_ENABLE_DIXA the SDK's
    /// parameters, and the events.
    void fill();

    /// Public and `DRA_` names only: a `DIXA_` name has a position but no id here.
    const std::map<std::string, int>& parameterIdByName() const { return parameterIdByName_; }
    /// `DIXA_` names to the SDK's id plus FG_SDK_IDS.
    const std::map<std::string, int>& unwrappedIdByName() const { return unwrappedIdByName_; }
    const std::map<int, std::string>& parameterNameByIndex() const { return parameterNameByIndex_; }
    const std::map<std::string, std::string>& parameterDescriptionByName() const { return parameterDescriptionByName_; }
    /// An event answers to the design's name and, where it has one, to its public name.
    const std::map<std::string, std::uint64_t>& eventMaskByName() const { return eventMaskByName_; }
    const std::map<std::uint64_t, std::string>& eventNameByMask() const { return eventNameByMask_; }

private:
    void collectSdkNames();
    void enterPublicNames();
    void enterRegisters();
    void enterSdkNames();
    void enterPositions();
    void enterEvents();
    void enterPublicEvent(int count, const PublicEvent& named);
    /// Calls `enter(name)` for each register of the design; for none without the direct access.
    template <class Enter>
    void forEachRegister(Enter&& enter) const;
    /// The id that the SDK gives for a name that is switched on; 0 for any other.
    int unwrappedId(const std::string& name) const;

    FgIxWrapper& wrapper_;
    PropertyStore properties_{true, true};
    std::string propertySection = "none";
    std::map<std::string, int> parameterIdByName_;
    std::map<std::string, int> unwrappedIdByName_;
    std::map<int, std::string> parameterNameByIndex_;
    std::map<std::string, std::string> parameterDescriptionByName_;
    std::map<std::string, std::uint64_t> eventMaskByName_;
    std::map<std::uint64_t, std::string> eventNameByMask_;
};

}  // namespace quillon
