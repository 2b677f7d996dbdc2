#include "gige/Description.h"

#include <pugixml.hpp>

#include <cstdlib>
#include <sstream>
#include <stdexcept>
#include <string_view>

#include "gige/PixelFormats.h"
#include "gige/StandardFeatures.h"
#include "quillon/PublicParameters.h"

namespace quillon::gige {
namespace {

constexpr const char* Port = "Device";

std::string hexadecimal(std::uint32_t number) {
    std::ostringstream text;
    text << "0x" << std::uppercase << std::hex << number;
    return text.str();
}

void add(pugi::xml_node node, const char* name, const std::string& text) {
    node.append_child(name).text().set(text.c_str());
}

bool endsWith(std::string_view text, std::string_view end) {
    return text.size() > end.size() && text.substr(text.size() - end.size()) == end;
}

/// The feature that a register belongs to: "FG_WIDTH" of "FG_WIDTH_Reg".
std::string featureOf(const std::string& registerName) {
    constexpr std::string_view Suffix = "_Reg";
    return endsWith(registerName, Suffix) ? registerName.substr(0, registerName.size() - Suffix.size()) : registerName;
}

bool isRegister(const pugi::xml_node& node) {
    const std::string_view kind = node.name();
    return kind == "IntReg" || kind == "FloatReg" || kind == "StringReg";
}

/// Whether a parameter can be written in any mode.
bool canEverBeWritten(int parameter) {
    const PublicParameter* const found = findPublicParameter(parameter);
    return found != nullptr && found->access == ParameterAccess::ReadWrite;
}

/// The registers of the applet's document, at the addresses of the device.
class Registers {
public:
    void move(pugi::xml_node node) {
        ParameterRegister reg;
        reg.parameter = node.child("Address").text().as_int();
        reg.address = FirstParameterAddress + ParameterStride * static_cast<std::uint32_t>(all_.size());
        reg.name = featureOf(node.attribute("Name").value());
        reg.length = node.child("Length").text().as_uint();
        reg.kind = std::string_view(node.name()) == "FloatReg"    ? RegisterKind::Real
                   : std::string_view(node.name()) == "StringReg" ? RegisterKind::Text
                                                                  : RegisterKind::Integer;
        reg.isSigned = std::string_view(node.child("Sign").text().get()) == "Signed";
        reg.writable = canEverBeWritten(reg.parameter);
        if (reg.kind == RegisterKind::Text) {
            // What lies behind it are the limits of numbers.
            reg.length = std::min(reg.length, MinimumOffset);
            node.child("Length").text().set(reg.length);
        }
        node.child("Address").text().set(hexadecimal(reg.address).c_str());
        node.child("AccessMode").text().set(reg.writable ? "RW" : "RO");
        node.child("pPort").text().set(Port);
        pugi::xml_node cachable = node.insert_child_after("Cachable", node.child("pPort"));
        cachable.text().set("NoCache");
        if (pugi::xml_node endianess = node.child("Endianess")) {
            endianess.text().set("BigEndian");
        }
        all_.push_back(reg);
    }

    const ParameterRegister* of(const std::string& feature) const {
        for (const ParameterRegister& reg : all_) {
            if (reg.name == feature) {
                return &reg;
            }
        }
        return nullptr;
    }

    std::vector<ParameterRegister> take() { return std::move(all_); }

private:
    std::vector<ParameterRegister> all_;
};

/// Adds a register in front of a feature that tells a limit of the moment, and points the feature at it.
void followLimit(pugi::xml_node feature, const ParameterRegister& reg, const char* limit, const char* pointer,
                 std::uint32_t offset) {
    pugi::xml_node told = feature.child(limit);
    if (!told) {
        return;
    }
    const bool real = reg.kind == RegisterKind::Real;
    const std::string name = reg.name + "_" + limit;
    pugi::xml_node node = feature.parent().insert_child_before(real ? "FloatReg" : "IntReg", feature);
    node.append_attribute("Name").set_value(name.c_str());
    add(node, "Address", hexadecimal(reg.address + offset));
    add(node, "Length", "8");
    add(node, "AccessMode", "RO");
    add(node, "pPort", Port);
    add(node, "Cachable", "NoCache");
    if (!real) {
        add(node, "Sign", "Signed");
    }
    add(node, "Endianess", "BigEndian");
    told.set_name(pointer);
    told.text().set(name.c_str());
}

void followLimits(pugi::xml_node feature, const Registers& registers) {
    const ParameterRegister* const reg = registers.of(feature.attribute("Name").value());
    if (reg == nullptr) {
        return;
    }
    followLimit(feature, *reg, "Min", "pMin", MinimumOffset);
    followLimit(feature, *reg, "Max", "pMax", MaximumOffset);
    if (reg->kind == RegisterKind::Integer) {
        followLimit(feature, *reg, "Inc", "pInc", IncrementOffset);
    }
}

void addPixelFormats(pugi::xml_node root) {
    pugi::xml_node feature = root.append_child("Enumeration");
    feature.append_attribute("Name").set_value("PixelFormat");
    for (const PixelFormat& format : PixelFormats) {
        pugi::xml_node entry = feature.append_child("EnumEntry");
        entry.append_attribute("Name").set_value(std::string(format.name).c_str());
        add(entry, "Value", std::to_string(format.code));
    }
    add(feature, "pValue", "PixelFormat_Reg");
    pugi::xml_node reg = root.append_child("IntReg");
    reg.append_attribute("Name").set_value("PixelFormat_Reg");
    add(reg, "Address", hexadecimal(static_cast<std::uint32_t>(DeviceRegister::PixelFormat)));
    add(reg, "Length", "4");
    add(reg, "AccessMode", "RW");
    add(reg, "pPort", Port);
    add(reg, "Cachable", "NoCache");
    add(reg, "Sign", "Unsigned");
    add(reg, "Endianess", "BigEndian");
}

/// The standard categories come first, as nodes and among the features of Root.
void addStandardFeatures(pugi::xml_node root) {
    pugi::xml_document nodes;
    if (!nodes.load_buffer(StandardFeatures.data(), StandardFeatures.size())) {
        throw std::logic_error("the standard features are no XML");
    }
    pugi::xml_node categories = root.find_child_by_attribute("Category", "Name", "Root");
    if (!categories) {
        throw std::runtime_error("the applet's document has no category Root");
    }
    pugi::xml_node place = categories.first_child();
    for (const pugi::xml_node node : nodes.document_element().children()) {
        root.append_copy(node);
        if (std::string_view(node.name()) == "Category") {
            pugi::xml_node feature = categories.insert_child_before("pFeature", place);
            feature.text().set(node.attribute("Name").value());
        }
    }
    addPixelFormats(root);
}

void setHead(pugi::xml_node root) {
    const auto set = [&](const char* name, const char* value) {
        if (!root.attribute(name)) {
            root.append_attribute(name);
        }
        root.attribute(name).set_value(value);
    };
    set("StandardNameSpace", "GEV");
    set("SchemaMajorVersion", "1");
    set("SchemaMinorVersion", "1");
    set("SchemaSubMinorVersion", "0");
    set("ProductGuid", "6D0E1C6B-6B0F-4B6C-9E53-2C1D7A1F5E01");
    set("VersionGuid", "6D0E1C6B-6B0F-4B6C-9E53-2C1D7A1F5E02");
    set("xmlns", "http://www.genicam.org/GenApi/Version_1_1");
    set("xsi:schemaLocation", "http://www.genicam.org/GenApi/Version_1_1 GenApiSchema_Version_1_1.xsd");
}

}  // namespace

Description describe(const std::string& document) {
    pugi::xml_document xml;
    const pugi::xml_parse_result result = xml.load_buffer(document.data(), document.size());
    pugi::xml_node root = xml.document_element();
    if (!result || std::string_view(root.name()) != "RegisterDescription") {
        throw std::runtime_error("the applet's document is no description of registers");
    }
    setHead(root);
    Registers registers;
    for (const pugi::xml_node node : root.children()) {
        if (isRegister(node)) {
            registers.move(node);
        }
    }
    for (pugi::xml_node node = root.first_child(); node; node = node.next_sibling()) {
        const std::string_view kind = node.name();
        if (kind == "Integer" || kind == "Float") {
            followLimits(node, registers);
        }
    }
    addStandardFeatures(root);
    root.find_child_by_attribute("Port", "Name", "DevicePort").attribute("Name").set_value(Port);
    std::ostringstream text;
    xml.save(text, "", pugi::format_default | pugi::format_no_empty_element_tags, pugi::encoding_utf8);
    return {text.str(), registers.take()};
}

const PixelFormat* pixelFormatOf(std::uint32_t code) {
    for (const PixelFormat& format : PixelFormats) {
        if (format.code == code) {
            return &format;
        }
    }
    return nullptr;
}

}  // namespace quillon::gige
