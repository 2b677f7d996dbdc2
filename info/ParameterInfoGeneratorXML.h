#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "quillon/RegisterInfo.h"

namespace quillon {

/// The entries of an enumeration by rising value, every value once.
using NamesByValue = std::vector<std::pair<int, std::string_view>>;

/// Writes parameters as elements of a GenApi register description, by appending to a text.
///
/// The register's address is the parameter's id, its access mode comes from the two lower access flags. Integers are
/// written as unsigned 64-bit decimals, floats with 12 significant digits. No form but the register block ends its last
/// line. The `value` arguments, and `inc` of the float forms, are not used.
class ParameterInfoGeneratorXML {
public:
    explicit ParameterInfoGeneratorXML(std::string& output) : out_(output) {}

    /// Address, length in bytes, access mode and port of a register.
    void infoGenerate(const RegisterInfo& info, int length);
    /// An integer and its register.
    void infoGenerate(const RegisterInfo& info, std::uint64_t value, std::uint64_t min, std::uint64_t max,
                      std::uint64_t inc);
    /// A float and its register.
    void infoGenerate(const RegisterInfo& info, double value, double min, double max, double inc);
    /// A string register.
    void infoGenerate(const RegisterInfo& info);
    /// An enumeration and its register.
    void infoGenerate(const RegisterInfo& info, int value, const NamesByValue& entries);
    /// A selector, the register that it selects from, and the integer.
    void infoGenerate(const RegisterInfo& info, const std::vector<std::uint64_t>& values, std::uint64_t min,
                      std::uint64_t max, std::uint64_t inc);
    /// A selector, the register that it selects from, and the float.
    void infoGenerate(const RegisterInfo& info, const std::vector<double>& values, double min, double max, double inc);

private:
    void integerRegister(const RegisterInfo& info, const std::string& name, int length, std::string_view sign);
    void description(const RegisterInfo& info);
    void selector(const std::string& name, std::size_t elements);

    std::string& out_;
};

}  // namespace quillon
