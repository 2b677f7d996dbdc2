#include "cli/ConfigurationCheck.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <limits>
#include <map>
#include <set>
#include <type_traits>
#include <utility>

#include "cli/Answers.h"
#include "cli/Arguments.h"
#include "cli/ConfigurationFile.h"
#include "cli/ExitStatus.h"
#include "cli/LookupTableFile.h"
#include "cli/Refusals.h"
#include "cli/Suggestions.h"
#include "quillon/client/Accepted.h"
#include "quillon/client/Text.h"

namespace quillon::cli {

namespace {

/// The simulator's sizes and rates are computed from one another. A load hands those of the chosen speed mode to the
/// design in one go, with FG_CAMERASIMULATOR_SELECT_MODE, and that is where they are refused; one by one they would
/// change each other. What belongs to another mode is no error, as long as some mode accepts it.
struct SimulatorValue {
    std::string_view key;
    double least;
    double most;
};
constexpr double AnyRate = std::numeric_limits<double>::infinity();
constexpr double NoRate = std::numeric_limits<double>::denorm_min();
constexpr std::array SimulatorValues{
    SimulatorValue{"FG_CAMERASIMULATOR_WIDTH", 1, 294920},
    SimulatorValue{"FG_CAMERASIMULATOR_LINE_GAP", 0, 294920},
    SimulatorValue{"FG_CAMERASIMULATOR_HEIGHT", 1, 65536},
    SimulatorValue{"FG_CAMERASIMULATOR_FRAME_GAP", 0, 65535},
    SimulatorValue{"FG_CAMERASIMULATOR_PIXEL_FREQUENCY", 0, 4000},
    SimulatorValue{"FG_CAMERASIMULATOR_LINERATE", NoRate, AnyRate},
    SimulatorValue{"FG_CAMERASIMULATOR_FRAMERATE", NoRate, AnyRate},
};

bool isSimulatorValue(std::string_view key) {
    return std::any_of(SimulatorValues.begin(), SimulatorValues.end(),
                       [key](const SimulatorValue& one) { return one.key == key; });
}

double numberOf(const Value& value) {
    return std::visit(
        [](const auto& held) -> double {
            if constexpr (std::is_arithmetic_v<std::decay_t<decltype(held)>>) {
                return static_cast<double>(held);
            } else {
                return std::numeric_limits<double>::quiet_NaN();
            }
        },
        value);
}

/// Looks for what a load does not tell: it stops at the first missing key, and keeps refused values to itself.
class Checker {
public:
    Checker(Session& session, const std::filesystem::path& path)
        : session_(session), applet_(session.applet()), path_(path), file_(path), known_(savedState(applet_)) {}

    std::vector<Complaint> check() {
        checkName();
        checkHeader();
        checkKeys();
        const bool loads = complaints_.empty();
        checkLines();
        if (loads) {
            checkValues();
        } else {
            checkNumbers();
        }
        std::stable_sort(complaints_.begin(), complaints_.end(),
                         [](const Complaint& left, const Complaint& right) { return left.line < right.line; });
        return complaints_;
    }

private:
    void complain(int line, const std::string& key, const std::string& text, bool note = false, Json details = {}) {
        complaints_.push_back({line, key, text, note, std::move(details)});
    }

    void checkName() {
        if (path_.string().find(".mcf") == std::string::npos) {
            complain(0, "", "the name must contain .mcf");
        }
    }

    void checkHeader() {
        if (!file_.hasHeaderSection()) {
            complain(0, "",
                     file_.hasCarriageReturns()
                         ? "the lines end in CR LF, as some editors write them: a load does not find "
                           "[Kamerasektion]; they have to end in LF alone"
                         : "the line [Kamerasektion] is missing");
        }
        for (const char* key : {"Hersteller", "Typ", "AktivePort"}) {
            if (file_.findInHeader(key) == nullptr) {
                complain(0, key, "the header lacks this key");
            }
        }
        const ConfigurationLine* type = file_.findInHeader("Typ");
        const std::string expected = session_.library().infoText(QuillonInfoName);
        if (type != nullptr && type->value != expected) {
            complain(type->number, "Typ",
                     "the file is for the applet \"" + type->value + "\", not for \"" + expected + "\"");
        }
    }

    void checkKeys() {
        const auto isThere = [this](const ConfigurationLine& known) {
            return isLoaded(known.key) && file_.find(known.key) != nullptr;
        };
        if (std::ranges::none_of(known_, isThere)) {
            complain(0, "", "it is no configuration of this applet: it has none of its keys");
            return;
        }
        for (const ConfigurationLine& known : known_) {
            if (isLoaded(known.key) && file_.find(known.key) == nullptr) {
                complain(0, known.key,
                         "missing; at the start it is " + valueInWords(applet_, known) + nearbyText(known.key));
            }
        }
    }

    /// Where the key stands in a form that a load does not find.
    std::string nearbyText(const std::string& key) const {
        for (const ConfigurationLine& line : file_.lines()) {
            if (line.key != key && trimmed(line.key) == key) {
                return "; line " + std::to_string(line.number) + " has it with blanks, which hides it";
            }
            if (line.key == key && !line.inPort) {
                return "; line " + std::to_string(line.number) + " has it before [Port A], which hides it";
            }
        }
        return "";
    }

    void checkLines() {
        for (const int line : file_.overlongLines()) {
            complain(line, "", "the line has more than 255 characters and is read in pieces");
        }
        std::vector<std::string> names;
        for (const ConfigurationLine& known : known_) {
            names.push_back(known.key);
        }
        for (const ConfigurationLine& line : file_.lines()) {
            if (!line.inPort) {
                continue;
            }
            if (std::find(names.begin(), names.end(), trimmed(line.key)) == names.end()) {
                complain(line.number, line.key, "unknown key, not looked at" + didYouMean(line.key, names), true);
            } else if (line.key == trimmed(line.key) && file_.find(line.key)->number != line.number) {
                const std::string first = std::to_string(file_.find(line.key)->number);
                complain(line.number, line.key, "not looked at, since line " + first + " has the key already", true);
            }
        }
    }

    /// Values of a file that does not load: only whether they are values at all.
    void checkNumbers() {
        for (const ConfigurationLine& known : known_) {
            const ConfigurationLine* line = isLoaded(known.key) ? file_.find(known.key) : nullptr;
            if (line != nullptr) {
                parse(*line);
            }
        }
    }

    std::optional<std::pair<Parameter, Value>> parse(const ConfigurationLine& line) {
        const Parameter parameter = findParameter(applet_, line.key);
        const bool isWhole = parameter.kind == ParameterKind::Int || parameter.kind == ParameterKind::Int64;
        if (isWhole && !parseWholeNumber(line.value)) {
            complain(line.number, line.key,
                     "\"" + line.value + "\" is no whole number and is taken for what its beginning says", false,
                     object({{"value", line.value}}));
            return std::nullopt;
        }
        try {
            return std::pair(parameter, parseFileValue(applet_, parameter, line.value));
        } catch (const UsageError& error) {
            complain(line.number, line.key, error.what(), false, object({{"value", line.value}}));
            return std::nullopt;
        }
    }

    /// Loads the file, so that all values are in place together, and then sets each once more: what is refused now was
    /// refused without a word by the load.
    void checkValues() {
        checkTableFile();
        const std::size_t before = complaints_.size();
        for (const SimulatorValue& bounds : SimulatorValues) {
            checkSimulatorValue(*file_.find(std::string(bounds.key)), bounds);
        }
        // The mode is refused for a value of its own, which is told already.
        simulatorIsBad_ = complaints_.size() != before;
        parseAll();
        findCulprits();
        for (const std::string& key : culprits_) {
            tellRefusal(key);
        }
        loadWithout({});
        if (!simulatorIsBad_ && !culprits_.contains("FG_CAMERASIMULATOR_SELECT_MODE")) {
            checkWhatTheSimulatorMakes();
        }
        checkVantagePoint();
    }

    /// The values that a write can be tried with.
    void parseAll() {
        for (const ConfigurationLine& known : known_) {
            const ConfigurationLine* line = isLoaded(known.key) ? file_.find(known.key) : nullptr;
            const bool isTold = (simulatorIsBad_ && known.key == "FG_CAMERASIMULATOR_SELECT_MODE") ||
                                (tableIsBad_ && known.key == "FG_LUT_TYPE");
            if (line == nullptr || isSimulatorValue(known.key) || isTold) {
                continue;
            }
            auto parsed = parse(*line);
            if (!parsed) {
                culprits_.insert(known.key);  // told, and to be kept from the others
                unreadable_.insert(known.key);
            } else if (!isText(parsed->first)) {
                values_.emplace_back(known.key, std::move(*parsed));
            }
        }
    }

    /// Loads the file with the start-up values in the place of some.
    void loadWithout(const std::set<std::string>& replaced) {
        const TemporaryConfiguration copy;
        {
            std::ifstream from(path_);
            std::ofstream to(copy.path(), std::ios::binary);
            std::string text;
            for (int number = 1; std::getline(from, text); ++number) {
                const auto known = std::ranges::find_if(known_, [&](const ConfigurationLine& one) {
                    return replaced.contains(one.key) && file_.find(one.key)->number == number;
                });
                to << (known != known_.end() ? known->key + "=" + known->value + ";" : text) << '\n';
            }
        }
        loadConfiguration(applet_, copy.path());
    }

    /// The keys that are refused once all the others are in place.
    std::set<std::string> refusedWithout(const std::set<std::string>& replaced) {
        loadWithout(replaced);
        std::set<std::string> refused;
        for (const auto& [key, parsed] : values_) {
            if (!replaced.contains(key) && writeValue(applet_, parsed.first, parsed.second) != 0) {
                refused.insert(key);
            }
        }
        return refused;
    }

    /// Whether no state accepts the value: an enumerator that there is none of, a number outside bounds that never
    /// move.
    static bool isAlwaysWrong(const Parameter& parameter, const Value& value) {
        if (!parameter.record) {
            return false;
        }
        const double number = numberOf(value);
        if (parameter.isEnumerated()) {
            return parameter.record->entry(static_cast<std::int32_t>(number)) == nullptr;
        }
        return client::rangeReason(parameter.name).empty() &&
               client::nearestAccepted(*parameter.record, number) != std::optional(number);
    }

    /// One wrong value has others refused that hang on it. Those are to blame without which the fewest others are
    /// refused; of equals the first in the file.
    void findCulprits() {
        std::set<std::string> refused = refusedWithout(culprits_);
        for (const auto& [key, parsed] : values_) {
            if (refused.contains(key) && isAlwaysWrong(parsed.first, parsed.second)) {
                culprits_.insert(key);
            }
        }
        refused = refusedWithout(culprits_);
        while (!refused.empty()) {
            std::string culprit;
            std::set<std::string> rest;
            for (const auto& [key, parsed] : values_) {
                if (!refused.contains(key)) {
                    continue;
                }
                std::set<std::string> replaced = culprits_;
                replaced.insert(key);
                std::set<std::string> others = refusedWithout(replaced);
                if (culprit.empty() || others.size() < rest.size()) {
                    culprit = key;
                    rest = std::move(others);
                }
            }
            culprits_.insert(culprit);
            refused = std::move(rest);
        }
    }

    /// What is accepted is told as it is with nothing else amiss.
    void tellRefusal(const std::string& key) {
        const auto value = std::ranges::find(values_, key, [](const auto& one) { return one.first; });
        if (unreadable_.contains(key) || value == values_.end()) {
            return;
        }
        std::set<std::string> others = culprits_;
        others.erase(key);
        loadWithout(others);
        const auto& [parameter, wanted] = value->second;
        int code = writeValue(applet_, parameter, wanted);
        if (code == 0) {  // what it hangs on stands behind it
            loadWithout({});
            code = writeValue(applet_, parameter, wanted);
        }
        if (code != 0) {
            const Refusal refusal = explainSet(applet_, parameter, wanted, code, &session_.board());
            Json details = valueOf(parameter, wanted);
            put(details, "refused", toJson(refusal));
            complain(file_.find(key)->number, key, inWords(parameter, wanted) + " " + inWords(refusal), false,
                     std::move(details));
        }
    }

    /// The file of the tables: a load answers success whatever it is.
    void checkTableFile() {
        const ConfigurationLine& line = *file_.find("FG_LUT_CUSTOM_FILE");
        if (line.value.empty()) {
            return;
        }
        const bool isUsed = trimmed(file_.find("FG_LUT_TYPE")->value) == "0";
        const std::filesystem::path table = line.value;
        if (table.is_relative()) {
            complain(line.number, line.key,
                     "\"" + line.value + "\" is looked for in the folder that the loading program runs in", true);
        }
        const auto findings = inspectTable(table);
        if (!findings.empty()) {
            tableIsBad_ = isUsed;
            const int at = findings.front().line;
            complain(line.number, line.key,
                     "\"" + line.value + "\"" + (at > 0 ? ", line " + std::to_string(at) : "") + ": " +
                         findings.front().text,
                     !isUsed);
        }
    }

    /// A load puts the simulator's width and rates in place; what the generator then runs with follows the mode.
    void checkWhatTheSimulatorMakes() {
        checkWhatIsMade("FG_CAMERASIMULATOR_WIDTH", "a load does not change the width that is in use");
        const std::string mode = trimmed(file_.find("FG_CAMERASIMULATOR_SELECT_MODE")->value);
        if (mode == "0") {
            checkWhatIsMade("FG_CAMERASIMULATOR_PIXEL_FREQUENCY", "the generator runs in whole cycles");
        } else if (mode == "1") {
            checkWhatIsMade("FG_CAMERASIMULATOR_LINERATE",
                            "the generator runs in whole cycles, and the width bounds the rate");
        } else {
            checkWhatIsMade("FG_CAMERASIMULATOR_FRAMERATE", "a load goes on with the rate of before");
        }
    }

    void checkWhatIsMade(const char* key, const std::string& because) {
        const ConfigurationLine& line = *file_.find(key);
        const Parameter parameter = findParameter(applet_, key);
        const auto wanted = parse(line);
        Value made;
        if (!wanted || readValue(applet_, parameter, made) != 0) {
            return;
        }
        // A file holds twelve digits.
        const double asked = numberOf(wanted->second);
        const double is = numberOf(made);
        if (std::abs(asked - is) > 1e-11 * std::max(std::abs(asked), std::abs(is))) {
            Json details = valueOf(parameter, wanted->second);
            put(details, "becomes", valueOf(parameter, made));
            complain(line.number, key,
                     inWords(parameter, wanted->second) + " becomes " + inWords(parameter, made) + ": " + because, true,
                     std::move(details));
        }
    }

    void checkVantagePoint() {
        const ConfigurationLine& line = *file_.find("FG_VANTAGEPOINT");
        if (trimmed(line.value) != "0" && !culprits_.contains(line.key)) {
            complain(line.number, line.key,
                     valueInWords(applet_, line) +
                         " is read back, but the design does not mirror: the sizes behind it end "
                         "that; set it again after the load",
                     true);
        }
    }

    static bool isText(const Parameter& parameter) { return parameter.kind == ParameterKind::String; }

    /// What no speed mode accepts. A load only puts these values in place, so that nothing else would tell.
    void checkSimulatorValue(const ConfigurationLine& line, const SimulatorValue& bounds) {
        const auto parsed = parse(line);
        if (!parsed) {
            return;
        }
        const double value = numberOf(parsed->second);
        if (!(value >= bounds.least && value <= bounds.most)) {
            const std::string range =
                bounds.most == AnyRate
                    ? "more than 0"
                    : client::readableLeast(bounds.least) + " to " +
                          inWords(parsed->first, parseValue(applet_, parsed->first, client::shortest(bounds.most)));
            complain(line.number, line.key,
                     inWords(parsed->first, parsed->second) + " is accepted in no speed mode\n  accepted: " + range,
                     false, valueOf(parsed->first, parsed->second));
        }
    }

    Session& session_;
    client::Applet& applet_;
    std::filesystem::path path_;
    ConfigurationFile file_;
    std::vector<ConfigurationLine> known_;
    std::vector<Complaint> complaints_;
    bool simulatorIsBad_ = false;
    bool tableIsBad_ = false;
    std::vector<std::pair<std::string, std::pair<Parameter, Value>>> values_;  ///< by key, in the order of the file
    std::set<std::string> culprits_;    ///< keys whose values are refused for no other's sake
    std::set<std::string> unreadable_;  ///< those among them that are no values
};

}  // namespace

std::vector<Complaint> checkConfiguration(Session& session, const std::filesystem::path& file) {
    return Checker(session, file).check();
}

bool isSound(const std::vector<Complaint>& complaints) {
    return std::ranges::all_of(complaints, &Complaint::note);
}

Json toJson(const Complaint& complaint) {
    Json json = object({{"line", complaint.line > 0 ? Json(complaint.line) : Json(nullptr)},
                        {"key", complaint.key},
                        {"kind", complaint.note ? "note" : "error"},
                        {"text", complaint.text}});
    if (!complaint.details.is_null()) {
        json.update(complaint.details);
    }
    return json;
}

std::string inWords(const std::filesystem::path& file, const Complaint& complaint, const Painter& painter) {
    const std::string place = file.string() + (complaint.line > 0 ? ":" + std::to_string(complaint.line) : "");
    const std::string kind = complaint.note ? painter.paint(Style::Faint, "note") : painter.paint(Style::Bad, "error");
    return place + ": " + kind + ": " + complaint.key + (complaint.key.empty() ? "" : ": ") + complaint.text;
}

std::vector<std::string> notKept(Session& session, Session& other, const std::filesystem::path& file) {
    // What these hold is the last use of them.
    constexpr std::array actions{FG_LUT_SAVE_FILE, FG_DEBUGSAVECONFIG};
    loadConfiguration(other.applet(), file);
    std::vector<std::string> lost;
    for (const PublicParameter& known : PublicParameters) {
        if (known.access != ParameterAccess::ReadWrite || std::ranges::find(actions, known.id) != actions.end()) {
            continue;
        }
        const Parameter parameter = findParameter(session.applet(), known.name);
        Value held;
        Value kept;
        if (readValue(session.applet(), parameter, held) == 0 && readValue(other.applet(), parameter, kept) == 0 &&
            held != kept) {
            lost.push_back(parameter.name + (parameter.run ? "" : " = " + inWords(parameter, held)));
        }
    }
    return lost;
}

}  // namespace quillon::cli
