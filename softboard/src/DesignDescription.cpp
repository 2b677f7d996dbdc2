#include "softboard/src/DesignDescription.h"

#include <nlohmann/json.hpp>

namespace softboard {
namespace {

using nlohmann::json;

constexpr std::int64_t LongestTable = 1 << 24;

std::vector<std::string> split(const std::string& path) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (std::size_t slash = path.find('/'); slash != std::string::npos; slash = path.find('/', start)) {
        parts.push_back(path.substr(start, slash - start));
        start = slash + 1;
    }
    parts.push_back(path.substr(start));
    return parts;
}

std::string joined(const std::vector<std::string>& parts) {
    std::string text;
    for (const std::string& part : parts) {
        text += text.empty() ? part : "_" + part;
    }
    return text;
}

ValueType valueType(const std::string& word) {
    static const std::unordered_map<std::string, ValueType> types = {
        {"int32", ValueType::Int32},   {"uint32", ValueType::UInt32}, {"int64", ValueType::Int64},
        {"uint64", ValueType::UInt64}, {"double", ValueType::Double}, {"text", ValueType::Text},
        {"table", ValueType::Table}};
    const auto found = types.find(word);
    if (found == types.end()) {
        throw DesignError("unknown type \"" + word + "\"");
    }
    return found->second;
}

std::int64_t integerOf(const json& object, const char* key, ValueType type, std::int64_t otherwise) {
    if (!object.contains(key)) {
        return otherwise;
    }
    const json& number = object.at(key);
    return type == ValueType::UInt64 ? static_cast<std::int64_t>(number.get<std::uint64_t>())
                                     : number.get<std::int64_t>();
}

std::size_t tableLength(const json& object) {
    const auto length = object.at("length").get<std::int64_t>();
    if (length < 1 || length > LongestTable) {
        throw DesignError("a table has 1 to " + std::to_string(LongestTable) + " elements");
    }
    return static_cast<std::size_t>(length);
}

void readRange(const json& object, ParameterDescription& parameter) {
    switch (parameter.type) {
        case ValueType::Double:
            parameter.realMinimum = object.value("min", 0.0);
            parameter.realMaximum = object.value("max", 0.0);
            parameter.real = object.value("value", 0.0);
            break;
        case ValueType::Text: parameter.text = object.value("value", std::string()); break;
        case ValueType::Table: parameter.length = tableLength(object); [[fallthrough]];
        default:
            parameter.minimum = integerOf(object, "min", parameter.type, 0);
            parameter.maximum = integerOf(object, "max", parameter.type, 0);
            parameter.integer = integerOf(object, "value", parameter.type, 0);
    }
}

ParameterDescription readParameter(const json& object) {
    ParameterDescription parameter;
    parameter.groups = split(object.at("path").get<std::string>());
    parameter.name = joined(parameter.groups);
    parameter.label = parameter.groups.back();
    parameter.groups.pop_back();
    const std::string access = object.at("access").get<std::string>();
    if (parameter.label.empty() || (access != "r" && access != "w" && access != "rw")) {
        throw DesignError("parameter \"" + parameter.name + "\" has no name or a wrong access");
    }
    parameter.readable = access != "w";
    parameter.writable = access != "r";
    parameter.type = valueType(object.at("type").get<std::string>());
    parameter.unit = object.value("unit", std::string());
    readRange(object, parameter);
    for (const json& entry : object.value("entries", json::array())) {
        parameter.entries.push_back(
            {entry.at(0).get<std::string>(), entry.at(1).get<std::int32_t>(), entry.at(2).get<std::string>()});
    }
    return parameter;
}

RegisterDirection registerDirection(const std::string& access) {
    if (access == "r") {
        return RegisterDirection::ReadOnly;
    }
    if (access == "w") {
        return RegisterDirection::WriteOnly;
    }
    if (access != "rw") {
        throw DesignError("unknown register access \"" + access + "\"");
    }
    return RegisterDirection::ReadWrite;
}

RegisterDescription readRegister(const json& object) {
    RegisterDescription reg;
    reg.name = object.at("name").get<std::string>();
    reg.transcriptName = "register " + reg.name;
    reg.bits = object.at("bits").get<int>();
    if (reg.bits < 1 || reg.bits > 64) {
        throw DesignError("register \"" + reg.name + "\" is not 1 to 64 bits wide");
    }
    reg.direction = registerDirection(object.at("access").get<std::string>());
    reg.value = object.value("value", std::uint64_t{0});
    return reg;
}

template <class Item>
std::unordered_map<std::string, std::size_t> positionsByName(const std::vector<Item>& items) {
    std::unordered_map<std::string, std::size_t> positions;
    for (std::size_t position = 0; position < items.size(); ++position) {
        if (!positions.emplace(items[position].name, position).second) {
            throw DesignError("\"" + items[position].name + "\" stands twice");
        }
    }
    return positions;
}

}  // namespace

std::shared_ptr<const DesignDescription> parseDesign(std::string_view text) try {
    const json document = json::parse(text);
    auto design = std::make_shared<DesignDescription>();
    design->fingerprint = std::hash<std::string_view>()(text);
    design->name = document.at("design").get<std::string>();
    design->version = document.at("version").get<std::string>();
    design->type = document.at("type").get<std::int32_t>();
    for (const json& object : document.at("parameters")) {
        design->parameters.push_back(readParameter(object));
        design->parameters.back().id = FirstDesignId + static_cast<std::int32_t>(design->parameters.size()) - 1;
    }
    for (const json& object : document.at("events")) {
        design->events.push_back({object.at("name").get<std::string>(), object.at("kind").get<std::int32_t>()});
    }
    for (const json& object : document.at("registers")) {
        design->registers.push_back(readRegister(object));
    }
    design->parameterByName = positionsByName(design->parameters);
    design->registerByName = positionsByName(design->registers);
    positionsByName(design->events);
    return design;
} catch (const json::exception& error) {
    throw DesignError(error.what());
}

}  // namespace softboard
