#include <algorithm>

#include "cli/Answers.h"
#include "cli/Arguments.h"
#include "cli/Refusals.h"
#include "cli/Suggestions.h"
#include "cli/Verb.h"

namespace quillon::cli {

namespace {

constexpr std::string_view Prefix = "DRA_";

std::string hexadecimal(std::uint64_t number) {
    std::ostringstream text;
    text << "0x" << std::hex << number;
    return text.str();
}

bool hasPrefix(std::string_view name) {
    return name.size() >= Prefix.size() &&
           std::equal(Prefix.begin(), Prefix.end(), name.begin(), [](char prefix, char character) {
               return prefix == std::toupper(static_cast<unsigned char>(character));
           });
}

/// All registers of the design, by position.
std::vector<Parameter> allRegisters(client::Applet& applet) {
    const std::vector<client::ParameterRecord> trees = applet.parameterInfo();
    std::vector<Parameter> registers;
    for (const std::string& name : parameterNames(applet)) {
        if (name.starts_with(Prefix)) {
            registers.push_back(findParameter(applet, name, trees));
        }
    }
    return registers;
}

/// The register with this name, number or id.
Parameter findRegister(client::Applet& applet, const std::vector<Parameter>& registers, const std::string& word) {
    const auto number = parseWholeNumber(word);
    if (!number) {
        return findParameter(applet, hasPrefix(word) ? word : std::string(Prefix) + word);
    }
    const auto isMeant = [&](const Parameter& one) {
        const auto id = static_cast<std::uint64_t>(one.id);
        return !number->negative && (number->magnitude == id || number->magnitude + FG_REGISTER_IDS == id);
    };
    const auto found = std::ranges::find_if(registers, isMeant);
    if (found == registers.end()) {
        throw UsageError("there is no register " + word + "; quillon registers lists them with their numbers");
    }
    return *found;
}

/// A register to look at, and what it is to hold before.
struct Wish {
    Parameter parameter;
    std::optional<Value> value;
};

std::vector<Wish> wishesOf(client::Applet& applet, const std::vector<std::string>& words) {
    const std::vector<Parameter> registers = allRegisters(applet);
    std::vector<Wish> wishes;
    for (const std::string& word : words) {
        const auto assignment = splitAssignment(word);
        Wish wish{findRegister(applet, registers, assignment ? assignment->first : trimmed(word)), std::nullopt};
        if (assignment) {
            wish.value = parseValue(applet, wish.parameter, assignment->second);
        }
        wishes.push_back(std::move(wish));
    }
    if (words.empty()) {
        std::ranges::transform(registers, std::back_inserter(wishes), [](const Parameter& one) {
            return Wish{one, std::nullopt};
        });
    }
    return wishes;
}

std::string nameOf(const Parameter& parameter) {
    return parameter.name.substr(hasPrefix(parameter.name) ? Prefix.size() : 0);
}

bool isSame(const Value& asked, std::uint64_t held) {
    const auto* negative = std::get_if<std::int64_t>(&asked);
    return negative != nullptr ? static_cast<std::uint64_t>(*negative) == held : asked == Value(held);
}

std::string inHexadecimal(const Value& value) {
    const auto* whole = std::get_if<std::uint64_t>(&value);
    return whole != nullptr ? hexadecimal(*whole) : numberInWords(value);
}

/// What came of the words, line by line.
class Answer {
public:
    Answer(Session& session, Console& console) : session_(session), console_(console) {}

    /// Says whether nothing was refused. `isListed`: nobody has asked for this register by name.
    bool add(const Wish& wish, bool isListed) {
        const Parameter& parameter = wish.parameter;
        const std::string access = accessOf(session_.board(), parameter);
        Json json = object({{"name", nameOf(parameter)},
                            {"number", parameter.id - FG_REGISTER_IDS},
                            {"id", parameter.id},
                            {"access", access},
                            {"writable", access != "read"}});
        std::string words;
        const bool done =
            wish.value ? write(wish, access, json, words) : read(parameter, access, isListed, json, words);
        rows_.push_back({std::to_string(parameter.id - FG_REGISTER_IDS), nameOf(parameter), words,
                         access == "read-write" ? access : access + "-only"});
        append(list_, std::move(json));
        return done;
    }

    void print() const {
        if (session_.options().json) {
            printJson(console_, list_);
        } else {
            printRows(console_.out, rows_);
        }
    }

private:
    bool read(const Parameter& parameter, const std::string& access, bool isListed, Json& json, std::string& words) {
        put(json, "value", nullptr);
        if (access == "write" && isListed) {
            return true;
        }
        std::uint64_t held = 0;
        const int code = session_.applet().getUnsigned64(parameter.id, held);
        if (code != 0 && isListed) {
            put(json, "refused", toJson(explainGet(code)));
        } else if (code != 0) {
            refuse(json, explainGet(code), nameOf(parameter));
        }
        if (code != 0) {
            words = client::describeCode(code);
            return false;
        }
        put(json, "value", held);
        words = hexadecimal(held);
        return true;
    }

    bool write(const Wish& wish, const std::string& access, Json& json, std::string& words) {
        const Parameter& parameter = wish.parameter;
        const std::string asked = inHexadecimal(*wish.value);
        const int code = writeValue(session_.applet(), parameter, *wish.value);
        put(json, "value", nullptr);
        put(json, "accepted", code == 0);
        if (code != 0) {
            put(json, "asked", valueOf(parameter, *wish.value));
            refuse(json, explainSet(session_.applet(), parameter, code), nameOf(parameter) + "=" + asked);
            words = client::describeCode(code);
            return false;
        }
        if (access == "write") {
            put(json, "asked", valueOf(parameter, *wish.value));
            words = asked + " written";
            return true;
        }
        const bool isRead = read(parameter, access, false, json, words);
        if (isRead && !isSame(*wish.value, json["value"].get<std::uint64_t>())) {
            put(json, "asked", valueOf(parameter, *wish.value));
            words += ", asked for " + asked;
        }
        return isRead;
    }

    void refuse(Json& json, const Refusal& refusal, const std::string& what) {
        put(json, "refused", toJson(refusal));
        console_.err << console_.errPainter.paint(Style::Bad, "quillon:") << " register " << what << " "
                     << inWords(refusal) << '\n';
    }

    Session& session_;
    Console& console_;
    Rows rows_;
    Json list_ = emptyList();
};

ExitStatus registers(Session& session, Console& console, const std::vector<std::string>& words) {
    session.enableDirectRegisterAccess();
    const std::vector<Wish> wishes = wishesOf(session.applet(), words);
    Answer answer(session, console);
    bool done = true;
    for (const Wish& wish : wishes) {
        const bool isDone = answer.add(wish, words.empty());
        done = done && isDone;
        if (!isDone && wish.value) {
            break;  // what follows may rest on it
        }
    }
    answer.print();
    return done || words.empty() ? Done : Refused;
}

}  // namespace

void addRegistersVerb(Verbs& verbs) {
    auto words = std::make_shared<std::vector<std::string>>();
    Verb verb = verbs.add("registers", "Read and write registers of the design directly, in this order",
                          "  quillon registers                         all registers: number, name, value, access\n"
                          "  quillon registers DesignId Scratch        some of them, by name\n"
                          "  quillon registers 5                       by number\n"
                          "  quillon registers LedControl=0x10         write it, then read it\n"
                          "  quillon registers SpiCommand=0x9F         one that can only be written is not read\n"
                          "  quillon registers Scratch=1 6=0 --json    for another program",
                          [words](Session& session, Console& console) { return registers(session, console, *words); });
    verb.add("NAME[=VALUE]", words.get(),
             "Registers by name, number, or id above 1000000; with a value to write it first");
}

}  // namespace quillon::cli
