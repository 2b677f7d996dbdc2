#include <array>

#include "cli/Suggestions.h"
#include "cli/Verb.h"
#include "quillon/Enumerators.h"
#include "quillon/client/Errors.h"

namespace quillon::cli {

namespace {

struct InfoRow {
    int key;
    std::string_view words;
    std::string_view symbol;  ///< in JSON
};

constexpr std::array textRows{
    InfoRow{QuillonInfoName, "Applet", "applet"},
    InfoRow{QuillonInfoVersion, "Version", "version"},
    InfoRow{QuillonInfoVersionWithDate, "Build", "build"},
    InfoRow{QuillonInfoCategory, "Design family", "family"},
    InfoRow{QuillonInfoDescription, "Description", "description"},
    InfoRow{QuillonInfoTags, "Properties", "properties"},
    InfoRow{QuillonInfoDesignIdentifier, "Design identifier", "designIdentifier"},
    InfoRow{QuillonInfoSecondDesignIdentifier, "Second design identifier", "secondDesignIdentifier"},
};

constexpr std::array numberRows{
    InfoRow{QuillonInfoProcesses, "Processes", "processes"},
    InfoRow{QuillonInfoBoardType, "Loader's number for the design file", "designFileNumber"},
    InfoRow{QuillonInfoInterfaceVersion, "Interface version", "interfaceVersion"},
};

// Keys whose numbers mean something to the SDK alone.
constexpr std::array otherKeys{848,  1040, 1045, 1792, 1872, 1888, 2064, 2160, 2192, 2560,
                               2816, 3072, 3328, 4624, 4640, 4656, 4672, 4688, 4704};

Json answers(const client::Library& library) {
    Json json = object({{"board", "software board"}});
    for (const InfoRow& row : textRows) {
        put(json, std::string(row.symbol), library.infoText(row.key));
    }
    for (const InfoRow& row : numberRows) {
        put(json, std::string(row.symbol), library.info(row.key));
    }
    put(json, "designBytes", library.designImage().size());
    put(json, "iconBytes", library.icon().size());
    Json keys;
    for (const int key : otherKeys) {
        put(keys, std::to_string(key), library.info(key));
    }
    put(json, "keys", keys);
    return json;
}

void printInWords(const Json& json, Console& console) {
    Rows rows{{"Board", "software board, no hardware: this command opens no other"}};
    for (const InfoRow& row : textRows) {
        rows.push_back({std::string(row.words), json[std::string(row.symbol)].get<std::string>()});
    }
    for (const InfoRow& row : numberRows) {
        rows.push_back({std::string(row.words), std::to_string(json[std::string(row.symbol)].get<int>())});
    }
    rows.push_back({"Carried design image", std::to_string(json["designBytes"].get<std::size_t>()) + " bytes"});
    rows.push_back({"Icon", std::to_string(json["iconBytes"].get<std::size_t>()) + " bytes, PNG"});
    std::string others;
    for (const auto& [key, value] : json["keys"].items()) {
        others += (others.empty() ? "" : ", ") + key + ": " + std::to_string(value.get<int>());
    }
    rows.push_back({"Other answers by key", others});
    printRows(console.out, rows);
}

ExitStatus showConstants(Session& session, Console& console, const std::vector<std::string>& names) {
    Json json;
    for (const std::string& name : names) {
        const auto value = session.library().constant(name);
        if (!value) {
            std::vector<std::string> known;
            for (const NamedEnumerator& enumerator : NamedEnumerators) {
                known.emplace_back(enumerator.name);
            }
            throw UsageError("there is no constant \"" + name + "\"" + didYouMean(name, known));
        }
        put(json, name, *value);
        if (!session.options().json) {
            console.out << name << " = " << *value << '\n';
        }
    }
    if (session.options().json) {
        printJson(console, json);
    }
    return Done;
}

ExitStatus info(Session& session, Console& console, const std::vector<std::string>& constants) {
    if (!constants.empty()) {
        return showConstants(session, console, constants);
    }
    const Json json = answers(session.library());
    if (session.options().json) {
        printJson(console, json);
    } else {
        printInWords(json, console);
    }
    return Done;
}

}  // namespace

void addInfoVerb(Verbs& verbs) {
    auto constants = std::make_shared<std::vector<std::string>>();
    Verb verb =
        verbs.add("info", "Tell what the applet is, without opening it",
                  "  quillon info                   name, version, description, carried design\n"
                  "  quillon info FG_COL24 RGB12    the values of public constants",
                  [constants](Session& session, Console& console) { return info(session, console, *constants); });
    verb.add("CONSTANT", constants.get(), "Public constants to look up");
}

}  // namespace quillon::cli
