// The GenApi description of the fixed catalogue: built by the applet, put together from ready pieces, and rendered by
// an XML library (pugixml, which nothing else of the project uses).

#include <benchmark/benchmark.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <iterator>
#include <map>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#ifdef QUILLON_HAS_PUGIXML
#include <pugixml.hpp>
#endif

#include "info/Catalogue.h"
#include "info/ParameterInfoBuilderXML.h"

namespace {

using quillon::Fg_ParameterInfo;

/// The store as it is after start-up, without the two optional groups.
struct Store {
    Store() { quillon::buildCatalogue(info, recordsById, {}); }

    std::string document() const {
        return quillon::ParameterInfoBuilderXML(info, {"Veltrix", "Quillon", "2.4"}, 0).build();
    }

    Fg_ParameterInfo info{1};
    quillon::RegisterInfoById recordsById;
};

void DescriptionBuild(benchmark::State& state) {
    const Store store;
    std::size_t size = 0;
    for (auto _ : state) {
        const std::string document = store.document();
        benchmark::DoNotOptimize(document.data());
        size = document.size();
    }
    state.counters["bytes"] = static_cast<double>(size);
}
BENCHMARK(DescriptionBuild);

/// What the document consists of: texts that are copied and numbers that are formatted.
using Piece = std::variant<std::string, std::uint64_t, std::int64_t, double>;

/// The number that a piece of the document is, or the text as it is. Only those that print alike again count as
/// numbers.
Piece pieceOf(std::string_view text) {
    const char* end = text.data() + text.size();
    if (std::uint64_t number = 0; std::from_chars(text.data(), end, number) == std::from_chars_result{end, {}}) {
        return number;
    }
    if (std::int64_t number = 0; std::from_chars(text.data(), end, number) == std::from_chars_result{end, {}}) {
        return number;
    }
    if (double number = 0; std::from_chars(text.data(), end, number) == std::from_chars_result{end, {}}) {
        return number;
    }
    return std::string(text);
}

/// Cuts the document at its line ends, and a line that holds one element at the element's content.
std::vector<Piece> piecesOf(std::string_view document) {
    std::vector<Piece> pieces;
    while (!document.empty()) {
        const std::string_view line = document.substr(0, document.find('\n') + 1);
        document.remove_prefix(line.size());
        const std::size_t begin = line.find('>');
        const std::size_t end = line.find("</");
        if (begin < end && end != std::string_view::npos) {
            pieces.emplace_back(std::string(line.substr(0, begin + 1)));
            pieces.push_back(pieceOf(line.substr(begin + 1, end - begin - 1)));
            pieces.emplace_back(std::string(line.substr(end)));
        } else {
            pieces.emplace_back(std::string(line));
        }
    }
    return pieces;
}

struct AppendTo {
    std::string& out;

    void operator()(const std::string& text) const { out.append(text); }
    void operator()(double number) const {
        char digits[32];
        out.append(digits, std::to_chars(digits, digits + sizeof digits, number, std::chars_format::general, 12).ptr);
    }
    template <typename Integer>
    void operator()(Integer number) const {
        char digits[24];
        out.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
    }
};

std::string putTogether(const std::vector<Piece>& pieces, std::size_t size) {
    std::string out;
    out.reserve(size);
    for (const Piece& piece : pieces) {
        std::visit(AppendTo{out}, piece);
    }
    return out;
}

void DescriptionBytesIntoBuffer(benchmark::State& state) {
    const std::string document = Store().document();
    const std::vector<Piece> pieces = piecesOf(document);
    if (putTogether(pieces, document.size()) != document) {
        state.SkipWithError("the pieces are not the document");
        return;
    }
    for (auto _ : state) {
        const std::string copy = putTogether(pieces, document.size());
        benchmark::DoNotOptimize(copy.data());
    }
}
BENCHMARK(DescriptionBytesIntoBuffer);

#ifdef QUILLON_HAS_PUGIXML

/// Renders the records with a tree of elements and attributes, as one would with an XML library: the same elements in
/// the same order with the same contents. Only the white space between them, and which quotes are used, are the
/// library's.
class LibraryBuilder {
public:
    explicit LibraryBuilder(const Fg_ParameterInfo& info) : info_(info) {}

    std::string build() {
        root_ = document_.append_child("RegisterDescription");
        writeAttributes();
        for (const RegisterInfo* record = info_.getRegisterInfo(0); record != nullptr; record = record->next) {
            addRecord(*record, nullptr);
        }
        writeCategories();
        root_.append_child("Port").append_attribute("Name") = "DevicePort";
        Text text;
        document_.save(text, "", pugi::format_raw, pugi::encoding_latin1);
        return std::move(text.bytes);
    }

private:
    struct Text : pugi::xml_writer {
        Text() { bytes.reserve(128 * 1024); }
        void write(const void* data, std::size_t size) override { bytes.append(static_cast<const char*>(data), size); }
        std::string bytes;
    };

    struct CategoryNode {
        std::string name;
        std::vector<std::string> features;
    };

    void writeAttributes() {
        const std::pair<const char*, const char*> attributes[] = {
            {"ModelName", "Quillon"},
            {"VendorName", "Veltrix"},
            {"StandardNameSpace", "None"},
            {"SchemaMajorVersion", "1"},
            {"SchemaMinorVersion", "0"},
            {"SchemaSubMinorVersion", "1"},
            {"MajorVersion", "1"},
            {"MinorVersion", "0"},
            {"SubMinorVersion", "0"},
            {"ProductGuid", "0"},
            {"VersionGuid", "0"},
            {"xmlns", "http://www.genicam.org/GenApi/Version_1_0"},
            {"xmlns:xsi", "http://www.w3.org/2001/XMLSchema-instance"},
            {"xsi:schemaLocation", "http://www.genicam.org/GenApi/Version_1_0 GenApiSchema_Version_1_0.xsd"},
        };
        for (const auto& [name, value] : attributes) {
            root_.append_attribute(name) = value;
        }
    }

    void addRecord(const RegisterInfo& record, const RegisterInfo* parent) {
        if (record.type != RegisterTypeGroup) {
            addParameter(record, *parent);
            return;
        }
        for (std::int32_t child = 0; child < record.as.group.childCount; ++child) {
            addRecord(*record.as.group.children[child], &record);
        }
    }

    void addParameter(const RegisterInfo& record, const RegisterInfo& parent) {
        const std::string name = record.symbol;
        switch (record.type) {
            case RegisterTypeUInt:
                addInteger(record, name, record.as.uint.min, record.as.uint.max, record.as.uint.inc);
                break;
            case RegisterTypeInt:
                addInteger(record, name, widened(record.as.integer.min), widened(record.as.integer.max),
                           widened(record.as.integer.inc));
                break;
            case RegisterTypeDouble: addFloat(record, name); break;
            case RegisterTypeString: addString(record, name); break;
            case RegisterTypeEnum: addEnumeration(record, name); break;
            default: return;
        }
        categoryOf(parent.label).features.push_back(name);
    }

    static std::uint64_t widened(std::int32_t bound) { return static_cast<std::uint64_t>(std::int64_t{bound}); }

    template <typename Value>
    static void addText(pugi::xml_node node, const char* element, Value value) {
        node.append_child(element).text().set(value);
    }

    pugi::xml_node addNamed(const char* element, const std::string& name) {
        pugi::xml_node node = root_.append_child(element);
        node.append_attribute("Name") = name.c_str();
        return node;
    }

    static void addRegisterBlock(pugi::xml_node node, const RegisterInfo& record, int length) {
        addText(node, "Address", record.parameterId);
        addText(node, "Length", length);
        addText(node, "AccessMode", (record.accessFlags & 2) != 0 ? "RW" : "RO");
        addText(node, "pPort", "DevicePort");
    }

    void addIntegerRegister(const RegisterInfo& record, const std::string& name, const char* sign) {
        pugi::xml_node node = addNamed("IntReg", name + "_Reg");
        addRegisterBlock(node, record, 4);
        addText(node, "Sign", sign);
        addText(node, "Endianess", "LittleEndian");
    }

    static void describe(pugi::xml_node node, const RegisterInfo& record, const std::string& name) {
        addText(node, "Description", record.label);
        addText(node, "pValue", (name + "_Reg").c_str());
    }

    void addInteger(const RegisterInfo& record, const std::string& name, std::uint64_t min, std::uint64_t max,
                    std::uint64_t inc) {
        addIntegerRegister(record, name, "Signed");
        pugi::xml_node node = addNamed("Integer", name);
        describe(node, record, name);
        addText(node, "Min", min);
        addText(node, "Max", max);
        if (inc != 0) {
            addText(node, "Inc", inc);
        }
    }

    void addFloat(const RegisterInfo& record, const std::string& name) {
        pugi::xml_node reg = addNamed("FloatReg", name + "_Reg");
        addRegisterBlock(reg, record, 8);
        addText(reg, "Endianess", "LittleEndian");
        pugi::xml_node node = addNamed("Float", name);
        describe(node, record, name);
        node.append_child("Min").text().set(record.as.real.min, 12);
        node.append_child("Max").text().set(record.as.real.max, 12);
    }

    void addString(const RegisterInfo& record, const std::string& name) {
        pugi::xml_node node = addNamed("StringReg", name);
        addText(node, "Description", record.label);
        addRegisterBlock(node, record, 4096);
    }

    void addEnumeration(const RegisterInfo& record, const std::string& name) {
        pugi::xml_node node = addNamed("Enumeration", name);
        addText(node, "Description", record.label);
        const RegisterInfoEnum& entries = record.as.enumeration;
        std::map<int, const char*> names;
        for (std::int32_t entry = 0; entry < entries.entryCount; ++entry) {
            names[entries.entryValues[entry]] = entries.entryNames[entry];
        }
        for (const auto& [value, text] : names) {
            pugi::xml_node item = node.append_child("EnumEntry");
            item.append_attribute("Name") = text;
            addText(item, "Value", value);
        }
        addText(node, "pValue", (name + "_Reg").c_str());
        addIntegerRegister(record, name, "Unsigned");
    }

    CategoryNode& categoryOf(std::string_view label) {
        std::string name;
        for (const char character : label) {
            if ((character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z')) {
                name += character;
            }
        }
        for (CategoryNode& category : categories_) {
            if (category.name == name) {
                return category;
            }
        }
        return categories_.emplace_back(CategoryNode{name, {}});
    }

    void writeCategories() {
        pugi::xml_node root = addNamed("Category", "Root");
        root.append_attribute("NameSpace") = "Standard";
        for (const CategoryNode& category : categories_) {
            addText(root, "pFeature", category.name.c_str());
        }
        for (const CategoryNode& category : categories_) {
            pugi::xml_node node = addNamed("Category", category.name);
            for (const std::string& feature : category.features) {
                addText(node, "pFeature", feature.c_str());
            }
        }
    }

    const Fg_ParameterInfo& info_;
    pugi::xml_document document_;
    pugi::xml_node root_;
    std::vector<CategoryNode> categories_;
};

/// Whether two trees have the same elements, attributes and texts in the same order.
bool alike(const pugi::xml_node& one, const pugi::xml_node& other) {
    const auto isElement = [](const pugi::xml_node& node) { return node.type() == pugi::node_element; };
    if (std::string_view(one.name()) != other.name() || std::string_view(one.text().get()) != other.text().get()) {
        return false;
    }
    for (auto left = one.first_attribute(), right = other.first_attribute(); left || right;
         left = left.next_attribute(), right = right.next_attribute()) {
        if (std::string_view(left.name()) != right.name() || std::string_view(left.value()) != right.value()) {
            return false;
        }
    }
    const auto elements = [&](const pugi::xml_node& node) {
        std::vector<pugi::xml_node> found;
        std::copy_if(node.begin(), node.end(), std::back_inserter(found), isElement);
        return found;
    };
    const std::vector<pugi::xml_node> left = elements(one);
    const std::vector<pugi::xml_node> right = elements(other);
    return std::equal(left.begin(), left.end(), right.begin(), right.end(), alike);
}

bool sameContent(const std::string& one, const std::string& other) {
    pugi::xml_document left;
    pugi::xml_document right;
    return left.load_string(one.c_str()) && right.load_string(other.c_str()) &&
           alike(left.document_element(), right.document_element());
}

void DescriptionByXmlLibrary(benchmark::State& state) {
    const Store store;
    if (!sameContent(LibraryBuilder(store.info).build(), store.document())) {
        state.SkipWithError("the library's document says something else");
        return;
    }
    for (auto _ : state) {
        const std::string document = LibraryBuilder(store.info).build();
        benchmark::DoNotOptimize(document.data());
    }
}
BENCHMARK(DescriptionByXmlLibrary);

#endif

}  // namespace
