#include <algorithm>
#include <cmath>
#include <map>

#include "cli/Answers.h"
#include "cli/Arguments.h"
#include "cli/ConfigurationCheck.h"
#include "cli/ConfigurationFile.h"
#include "cli/Effects.h"
#include "cli/Trace.h"
#include "cli/Verb.h"
#include "quillon/client/Text.h"

namespace quillon::cli {

namespace {

struct ApplyArguments {
    std::filesystem::path file;
    bool verify = false;
};

/// Something that is not as it should be after a load.
struct Deviation {
    std::string name;
    Json wanted;
    Json held;         ///< null where it could not be read
    std::string text;  ///< "the file says 6 pixel, the applet holds 4 pixel"
};

struct Verification {
    std::size_t read = 0;
    std::vector<Deviation> deviations;
};

/// An error in the file keeps it from being loaded.
std::vector<Complaint> check(Session& session, Console& console, const std::filesystem::path& file) {
    Options options = session.options();
    options.load.reset();
    options.save.reset();
    Session other(options);
    std::vector<Complaint> complaints = checkConfiguration(other, file);
    for (const Complaint& complaint : complaints) {
        if (!options.quiet) {
            console.err << inWords(file, complaint, console.errPainter) << '\n';
        }
    }
    if (!isSound(complaints)) {
        throw RefusedError(file.string() + " was not loaded; errors in it: " +
                           std::to_string(std::ranges::count(complaints, false, &Complaint::note)));
    }
    return complaints;
}

/// A file keeps twelve digits of a number.
bool isSame(const Parameter& parameter, const Value& wanted, const Value& held) {
    const auto* left = std::get_if<double>(&wanted);
    const auto* right = std::get_if<double>(&held);
    if (left != nullptr && right != nullptr) {
        return std::abs(*left - *right) <= 1e-11 * std::max(std::abs(*left), std::abs(*right));
    }
    return inWords(parameter, wanted) == inWords(parameter, held);
}

/// Reads each key of the file back from the applet.
Verification readBack(Session& session, const ConfigurationFile& file) {
    client::Applet& applet = session.applet();
    const std::vector<client::ParameterRecord> trees = applet.parameterInfo();
    Verification result;
    for (const ConfigurationLine& line : file.lines()) {
        if (!line.inPort || !isLoaded(line.key) || file.find(line.key)->number != line.number) {
            continue;
        }
        ++result.read;
        const Parameter parameter = findParameter(applet, line.key, trees);
        const Value wanted = parseFileValue(applet, parameter, line.value);
        const std::string says = "the file says " + inWords(parameter, wanted);
        Value held;
        if (const int code = readValue(applet, parameter, held); code != 0) {
            result.deviations.push_back({line.key, valueOf(parameter, wanted), valueOf(parameter, Value()),
                                         says + ", a read answers " + client::describeCode(code)});
        } else if (!isSame(parameter, wanted, held)) {
            result.deviations.push_back({line.key, valueOf(parameter, wanted), valueOf(parameter, held),
                                         says + ", the applet holds " + inWords(parameter, held)});
        } else if (parameter.id == FG_VANTAGEPOINT && toJson(held) != 0 && !observe(session).mirrored) {
            result.deviations.push_back({line.key, valueOf(parameter, wanted), valueOf(parameter, held),
                                         says + ", the applet holds that, and the design does not mirror"});
        }
    }
    return result;
}

/// What a parameter of the design was last written; the elements of a table each by its number.
struct Written {
    std::string value;
    std::int64_t result;
    std::map<std::size_t, std::string> elements;
};

/// "[0..2]=7,8,9" into the elements; false for what is no run.
bool addElements(const std::string& text, std::map<std::size_t, std::string>& elements) {
    const std::size_t sign = text.find("]=");
    const auto first = text.starts_with('[') && sign != std::string::npos
                           ? parseWholeNumber(std::string_view(text).substr(1, text.find("..") - 1))
                           : std::nullopt;
    if (!first) {
        return false;
    }
    std::istringstream values(text.substr(sign + 2));
    std::size_t index = first->magnitude;
    for (std::string value; std::getline(values, value, ',');) {
        elements[index++] = value;
    }
    return true;
}

/// What the board holds, as its accesses are written down.
std::string heldOf(const client::SoftBoard& board, const std::string& name) {
    try {
        return std::to_string(board.integer(name));
    } catch (const client::CallError&) {
    }
    try {
        return client::shortest(board.real(name));
    } catch (const client::CallError&) {
    }
    return board.text(name);
}

/// What the board holds in place of what was written, if it does.
std::optional<std::string> otherThan(const client::SoftBoard& board, const std::string& name, const Written& written) {
    for (const auto& [index, value] : written.elements) {
        if (const std::string held = std::to_string(board.element(name, index)); held != value) {
            return "element " + std::to_string(index) + ": " + held + " and not " + value;
        }
    }
    const std::string held = written.elements.empty() ? heldOf(board, name) : written.value;
    return held != written.value ? std::optional(held) : std::nullopt;
}

/// Compares what the load has written to the design with what the design holds.
Verification readBackDesign(const client::SoftBoard& board, const std::vector<client::Access>& accesses) {
    std::map<std::string, Written> all;
    for (const client::Access& access : accesses) {
        if (access.direction == client::Direction::Write) {
            // An id that the design does not know has no name.
            Written& written = all[access.name.empty() ? "parameter " + std::to_string(access.id) : access.name];
            written.result = access.result;
            written.value = addElements(access.value, written.elements) ? "" : access.value;
        }
    }
    Verification result;
    for (const auto& [name, written] : all) {
        ++result.read;
        const std::string wrote = "the load wrote " + (written.elements.empty() ? written.value : "a table");
        const Json wanted = object({{"value", written.value}});
        if (written.result != 0) {
            result.deviations.push_back({name, wanted, object({{"value", nullptr}}),
                                         wrote + ", the design answered " + std::to_string(written.result)});
            continue;
        }
        try {
            if (const auto held = otherThan(board, name, written)) {
                result.deviations.push_back(
                    {name, wanted, object({{"value", *held}}), wrote + ", the design holds " + *held});
            }
        } catch (const client::CallError& error) {
            result.deviations.push_back(
                {name, wanted, object({{"value", nullptr}}), wrote + ", and a read of it fails: " + error.what()});
        }
    }
    return result;
}

Json listOf(const Verification& verification) {
    Json list = emptyList();
    for (const Deviation& deviation : verification.deviations) {
        append(list, object({{"name", deviation.name},
                             {"wanted", deviation.wanted},
                             {"held", deviation.held},
                             {"text", deviation.text}}));
    }
    return object({{"read", verification.read}, {"deviations", list}});
}

void print(Console& console, const Verification& verification, const std::string& inOrder) {
    for (const Deviation& deviation : verification.deviations) {
        console.out << deviation.name << ": " << deviation.text << '\n';
    }
    const std::size_t deviating = verification.deviations.size();
    console.out << verification.read - deviating << " of " << verification.read << " " << inOrder << '\n';
}

ExitStatus apply(Session& session, Console& console, const ApplyArguments& arguments) {
    const std::vector<Complaint> complaints = check(session, console, arguments.file);
    session.applet();
    const auto accesses = traced(session.board(), [&] { loadConfiguration(session.applet(), arguments.file); });
    session.configurationLoaded(arguments.file);
    const Verification applet = readBack(session, ConfigurationFile(arguments.file));
    const Verification design = arguments.verify ? readBackDesign(session.board(), accesses) : Verification();
    if (session.options().json) {
        Json notes = emptyList();
        for (const Complaint& complaint : complaints) {
            append(notes, toJson(complaint));
        }
        Json json = object({{"applied", arguments.file.string()}, {"notes", notes}, {"applet", listOf(applet)}});
        if (arguments.verify) {
            put(json, "design", listOf(design));
        }
        printJson(console, json);
    } else {
        console.out << "applied " << arguments.file.string() << '\n';
        print(console, applet, "values are held as the file says");
        if (arguments.verify) {
            print(console, design, "parameters of the design hold what was written");
        }
    }
    return applet.deviations.empty() && design.deviations.empty() ? Done : Refused;
}

}  // namespace

void addApplyVerb(Verbs& verbs) {
    auto arguments = std::make_shared<ApplyArguments>();
    Verb verb = verbs.add(
        "apply", "Check a configuration, load it, read it back, and tell what deviates",
        "  quillon apply conveyor.mcf                      exit status 1 if anything is not as the file says\n"
        "  quillon apply conveyor.mcf --verify             and if the design does not hold what was written to it\n"
        "  quillon apply conveyor.mcf --quiet && echo ready\n"
        "\n"
        "A file that check finds errors in is not loaded. Real numbers are compared with the twelve digits that a file "
        "keeps.",
        [arguments](Session& session, Console& console) { return apply(session, console, *arguments); });
    verb.add("FILE", &arguments->file, "File to apply (.mcf)").required();
    verb.add("--verify", &arguments->verify, "Read the parameters of the design back, too, that the load has written");
}

}  // namespace quillon::cli
