#include "design/DesignParameters.h"

#include <memory>

#include "support/Failure.h"

namespace quillon {

using orlo::tools::logging::FailedCallLevel;
using orlo::tools::logging::UnresolvedLevel;

namespace {

/// A parameter's name and its messages, each a literal of its own.
struct Binding {
    const char* name;
    const char* unresolved;
    const char* settingFailed;
    const char* gettingFailed;
};

constexpr std::array<Binding, IxParameterCount> Bindings = {{
#define IX_PARAMETER(enumerator, name, direction)                \
    {name, "cannot retrieve IX id for IX parameter: '" name "'", \
     "Setting IX parameter '" name "' (ID: ", "Getting IX parameter '" name "' (ID: "},
#include "design/IxParameters.def"
#undef IX_PARAMETER
}};

/// Where the SDK writes a text of the design. It is not told a size, and a design may tell anything: there is far more
/// room than a text needs, of which only as much is ever touched as the text is long.
class TextRoom {
public:
    TextRoom() {
        room_[0] = '\0';
        room_[Size - 1] = '\0';
    }
    char* start() { return room_.get(); }
    std::string text() const { return room_.get(); }

private:
    static constexpr std::size_t Size = std::size_t{16} << 20U;
    std::unique_ptr<char[]> room_{new char[Size]};
};

const Binding& binding(Ix parameter) {
    return Bindings[static_cast<std::size_t>(parameter)];
}

}  // namespace

const char* DesignParameters::name(Ix parameter) {
    return binding(parameter).name;
}

void DesignParameters::lookUpIds() {
    for (std::size_t i = 0; i < Bindings.size(); ++i) {
        ids_[i] = wrapper_.getParameterIdByName(Bindings[i].name);
        if (ids_[i] < 1) {
            wrapper_.logMessage(UnresolvedLevel, [i](std::ostream& line) { line << Bindings[i].unresolved; });
        }
    }
}

void DesignParameters::set(Ix parameter, const void* value, unsigned process, FgParamTypes type, bool reportErrors) {
    int result = InvalidParameter;
    if (value != nullptr) {
        result = wrapper_.setUnwrappedParameterWithType(id(parameter), value, static_cast<int>(process), type);
        if (result == Success) {
            return;
        }
        wrapper_.logMessage(FailedCallLevel, [this, parameter, result](std::ostream& line) {
            line << binding(parameter).settingFailed << id(parameter) << ") failed: result = " << result;
        });
    }
    if (reportErrors) {
        fail(result);
    }
}

void DesignParameters::get(Ix parameter, void* value, unsigned process, FgParamTypes type, bool reportErrors) {
    int result = InvalidParameter;
    if (value != nullptr) {
        result = wrapper_.getUnwrappedParameterWithType(id(parameter), value, static_cast<int>(process), type);
        if (result == Success) {
            return;
        }
        wrapper_.logMessage(FailedCallLevel, [this, parameter, result](std::ostream& line) {
            line << binding(parameter).gettingFailed << id(parameter) << ") failed: result = " << result;
        });
    }
    if (reportErrors) {
        fail(result);
    }
}

std::string DesignParameters::readText(Ix parameter) {
    TextRoom room;
    read(parameter, room.start(), FgTypeCharBuffer);
    return room.text();
}

int DesignParameters::readText(int id, std::string& text) const {
    TextRoom room;
    const int result = getById(id, room.start(), FgTypeCharBuffer);
    text = result == Success ? room.text() : "";
    return result;
}

}  // namespace quillon
