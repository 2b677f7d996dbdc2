/// @file
/// The design loader.

#include "softboard/tavrt.h"

#include <cstring>
#include <fstream>
#include <sstream>
#include <string>

#include "softboard/softboard.h"
#include "softboard/src/Guarded.h"
#include "softboard/src/LoadedDesign.h"
#include "softboard/src/Process.h"

namespace {

using softboard::Function;
using softboard::guarded;
using softboard::listed;
using softboard::loadDesign;
using softboard::Process;

constexpr int AnyType = -1;

fpga_design* kept(std::unique_ptr<fpga_design> design) {
    return design ? Process::instance().keep(std::move(design)) : nullptr;
}

fpga_design* loadFile(const char* name, int type) {
    if (name == nullptr || type < 0) {
        return nullptr;
    }
    std::ostringstream stream;
    stream << std::ifstream(name, std::ios::binary).rdbuf();
    const std::string content = stream.str();  // empty if there is no such file, and then no image
    return kept(loadDesign(content.data(), content.size(), type));
}

/// Runs a question about a design under the process's record; `otherwise` answers for a design that is not loaded.
template <class Result, class Arguments, class Body>
Result asked(Function function, const fpga_design* design, Result otherwise, Arguments arguments, Body body) {
    return guarded<Result>(otherwise, [&] {
        return Process::instance().recorder().call(function, arguments, [&]() -> Result {
            return Process::instance().isDesign(design) ? body(*design->description) : otherwise;
        });
    });
}

const softboard::RegisterDescription* registerAt(const softboard::DesignDescription& description, int number) {
    const bool exists = number >= 1 && static_cast<std::size_t>(number) <= description.registers.size();
    return exists ? &description.registers[static_cast<std::size_t>(number) - 1] : nullptr;
}

}  // namespace

fpga_design* TavLoadDesignFromBuffer(const void* data, size_t size, int flags) {
    return guarded<fpga_design*>(nullptr, [&] {
        return Process::instance().recorder().call(
            Function::TavLoadDesignFromBuffer, [&] { return listed(size, flags); },
            [&] { return kept(loadDesign(data, size, AnyType)); });
    });
}

fpga_design* TavLoadTavFileWithType(const char* name, int type, int flags) {
    return guarded<fpga_design*>(nullptr, [&] {
        return Process::instance().recorder().call(
            Function::TavLoadTavFileWithType, [&] { return listed(name, type, flags); },
            [&] { return loadFile(name, type); });
    });
}

int TavUnloadTavFile(fpga_design* design) {
    return guarded<int>(SOFTBOARD_E_INTERNAL, [&] {
        return Process::instance().recorder().call(
            Function::TavUnloadTavFile, [] { return std::string(); },
            [&]() -> int { return Process::instance().unload(design) ? SOFTBOARD_OK : SOFTBOARD_E_ARGUMENT; });
    });
}

int TavGetNrOfRegister(fpga_design* design) {
    return asked<int>(
        Function::TavGetNrOfRegister, design, 0, [] { return std::string(); },
        [](const softboard::DesignDescription& description) { return static_cast<int>(description.registers.size()); });
}

const char* TavGetRegisterName(fpga_design* design, int number) {
    return asked<const char*>(
        Function::TavGetRegisterName, design, nullptr, [&] { return listed(number); },
        [&](const softboard::DesignDescription& description) -> const char* {
            const auto* reg = registerAt(description, number);
            return reg != nullptr ? reg->name.c_str() : nullptr;
        });
}

int TavGetRegisterByName(fpga_design* design, const char* name) {
    return asked<int>(
        Function::TavGetRegisterByName, design, 0, [&] { return listed(name); },
        [&](const softboard::DesignDescription& description) {
            const auto found = description.registerByName.find(name != nullptr ? name : "");
            return found != description.registerByName.end() ? static_cast<int>(found->second) + 1 : 0;
        });
}

int TavGetRegisterBitRange(fpga_design* design, int number) {
    return asked<int>(
        Function::TavGetRegisterBitRange, design, 0, [&] { return listed(number); },
        [&](const softboard::DesignDescription& description) {
            const auto* reg = registerAt(description, number);
            return reg != nullptr ? reg->bits : 0;
        });
}

int TavGetRegisterDirection(fpga_design* design, int number) {
    return asked<int>(
        Function::TavGetRegisterDirection, design, 0, [&] { return listed(number); },
        [&](const softboard::DesignDescription& description) {
            const auto* reg = registerAt(description, number);
            return reg != nullptr ? static_cast<int>(reg->direction) : 0;
        });
}

const tav_event* TavGetEvent(fpga_design* design, int position) {
    return asked<const tav_event*>(
        Function::TavGetEvent, design, nullptr, [&] { return listed(position); },
        [&](const softboard::DesignDescription&) -> const tav_event* {
            const bool exists = position >= 0 && static_cast<std::size_t>(position) < design->events.size();
            return exists ? &design->events[static_cast<std::size_t>(position)] : nullptr;
        });
}
