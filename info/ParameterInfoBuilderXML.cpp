#include "info/ParameterInfoBuilderXML.h"

#include <algorithm>

#include "info/DirectRegisterRecords.h"
#include "info/ParameterInfoGeneratorXML.h"
#include "info/XmlFilter.h"
#include "quillon/LiveField.h"

namespace quillon {

namespace {

constexpr std::string_view RootName = "Root";
/// Room for the document of the fixed catalogue, so that it is not copied while it grows.
constexpr std::size_t ExpectedDocumentSize = 128 * 1024;

std::string_view textOf(const char* text) {
    return text == nullptr ? std::string_view() : std::string_view(text);
}

/// The named entries by value; of several with one value the last counts.
NamesByValue namesByValue(const RegisterInfoEnum& entries) {
    NamesByValue names;
    names.reserve(static_cast<std::size_t>(entries.entryCount));
    for (std::int32_t entry = 0; entry < entries.entryCount; ++entry) {
        if (entries.entryNames[entry] == nullptr) {
            continue;
        }
        const int value = entries.entryValues[entry];
        const auto place = std::ranges::lower_bound(names, value, {}, &NamesByValue::value_type::first);
        if (place != names.end() && place->first == value) {
            place->second = entries.entryNames[entry];
        } else {
            names.insert(place, {value, entries.entryNames[entry]});
        }
    }
    return names;
}

/// A signed bound becomes an unsigned number of 64 bits with its sign carried on, so that -1 is 2^64 - 1.
std::uint64_t widened(const std::int32_t& bound) {
    return static_cast<std::uint64_t>(std::int64_t{loadLive(bound)});
}

std::uint64_t widened(const std::uint32_t& bound) {
    return loadLive(bound);
}

template <typename Range>
void generateInteger(ParameterInfoGeneratorXML& generator, const RegisterInfo& info, const Range& range) {
    generator.infoGenerate(info, widened(range.value), widened(range.min), widened(range.max), widened(range.inc));
}

/// Renders the record; false, with nothing written, for a kind that the document does not show.
bool generate(ParameterInfoGeneratorXML generator, const RegisterInfo& info) {
    switch (info.type) {
        case RegisterTypeUInt: generateInteger(generator, info, info.as.uint); return true;
        case RegisterTypeInt: generateInteger(generator, info, info.as.integer); return true;
        case RegisterTypeDouble:
            generator.infoGenerate(info, loadLive(info.as.real.value), loadLive(info.as.real.min),
                                   loadLive(info.as.real.max), loadLive(info.as.real.inc));
            return true;
        case RegisterTypeString: generator.infoGenerate(info); return true;
        case RegisterTypeEnum:
            generator.infoGenerate(info, info.as.enumeration.value, namesByValue(info.as.enumeration));
            return true;
        default: return false;
    }
}

void writeFeature(std::string& out, const std::string& name) {
    out.append("<pFeature>").append(name).append("</pFeature>\n");
}

}  // namespace

ParameterInfoBuilderXML::ParameterInfoBuilderXML(const Fg_ParameterInfo& store, const AppletNames& applet,
                                                 int listIndex)
    : info_(store),
      modelName_(xmlStringFilter(applet.name)),
      vendorName_(xmlStringFilter(applet.vendor)),
      port_(listIndex),
      root_(std::string(RootName)) {}

std::string ParameterInfoBuilderXML::build() {
    std::string out;
    out.reserve(ExpectedDocumentSize);
    writeHead(out);
    processRegisterInfo(out, info_.getRegisterInfo(port_), nullptr);
    writeCategory(out, root_);
    out += "<Port Name=\"DevicePort\"></Port>\n</RegisterDescription>\n";
    return out;
}

void ParameterInfoBuilderXML::writeHead(std::string& out) const {
    out += "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n\n<RegisterDescription\nModelName=\"";
    out += modelName_;
    out += "\"\nVendorName=\"";
    out += vendorName_;
    out +=
        "\"\n"
        "StandardNameSpace=\"None\"\n"
        "SchemaMajorVersion=\"1\"\n"
        "SchemaMinorVersion=\"0\"\n"
        "SchemaSubMinorVersion=\"1\"\n"
        "MajorVersion=\"1\"\n"
        "MinorVersion=\"0\"\n"
        "SubMinorVersion=\"0\"\n"
        "ProductGuid=\"0\"\n"
        "VersionGuid=\"0\"\n"
        "xmlns=\"http://www.genicam.org/GenApi/Version_1_0\"\n"
        "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\"\n"
        "xsi:schemaLocation=\"http://www.genicam.org/GenApi/Version_1_0 GenApiSchema_Version_1_0.xsd\">\n";
}

void ParameterInfoBuilderXML::processRegisterInfo(std::string& out, const RegisterInfo* first,
                                                  const RegisterInfo* parent) {
    for (const RegisterInfo* record = first; record != nullptr; record = record->next) {
        if (record->type != RegisterTypeGroup) {
            buildParamDescr(out, *record, parent);
            continue;
        }
        for (std::int32_t child = 0; child < record->as.group.childCount; ++child) {
            processRegisterInfo(out, record->as.group.children[child], record);
        }
    }
}

void ParameterInfoBuilderXML::buildParamDescr(std::string& out, const RegisterInfo& record,
                                              const RegisterInfo* parent) {
    const std::string_view parentLabel = parent == nullptr ? std::string_view() : textOf(parent->label);
    if (record.exported == 0 || parentLabel == DirectRegisterGroupLabel) {
        return;
    }
    if (!generate(ParameterInfoGeneratorXML(out), record)) {
        return;
    }
    categoryFor(parentLabel).addFeature(xmlNameFilter(xmlNameFilter(textOf(record.symbol))));
    // In this order, unlike an ordinary line end: consumers of the document know it so.
    out += "\n\r";
}

Category& ParameterInfoBuilderXML::categoryFor(std::string_view parentLabel) {
    if (parentLabel.empty()) {
        return root_;
    }
    const std::string name = xmlNameFilter(parentLabel);
    if (Category* known = root_.getChild(name); known != nullptr) {
        return *known;
    }
    return *new Category(name, &root_);
}

void ParameterInfoBuilderXML::writeCategory(std::string& out, const Category& category) const {
    out.append("<Category Name='").append(category.getName()).append("' ");
    if (category.getName() == RootName) {
        out += "NameSpace='Standard'";
    }
    out += " >\n";
    for (unsigned int child = 0; child < category.getChildCount(); ++child) {
        writeFeature(out, category.getChild(child)->getName());
    }
    for (unsigned int feature = 0; feature < category.getFeatureCount(); ++feature) {
        writeFeature(out, category.getFeature(feature));
    }
    out += "</Category>\n";
    for (unsigned int child = 0; child < category.getChildCount(); ++child) {
        writeCategory(out, *category.getChild(child));
    }
}

}  // namespace quillon
