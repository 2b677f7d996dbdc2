#include <algorithm>
#include <array>

#include "cli/Answers.h"
#include "cli/Arguments.h"
#include "cli/Inputs.h"
#include "cli/Refusals.h"
#include "cli/Verb.h"

namespace quillon::cli {

namespace {

/// A destination of the switchboard; its parameters end in _SOURCE and _POLARITY.
struct Route {
    std::string_view name;
    std::string_view parameter;
};

constexpr std::array routes{Route{"Camera trigger", "FG_TRIGGERCAMERA"},
                            Route{"GPO 0", "FG_TRIGGEROUT_GPO_0"},
                            Route{"GPO 1", "FG_TRIGGEROUT_GPO_1"},
                            Route{"GPO 2", "FG_TRIGGEROUT_GPO_2"},
                            Route{"GPO 3", "FG_TRIGGEROUT_GPO_3"},
                            Route{"GPO 4", "FG_TRIGGEROUT_GPO_4"},
                            Route{"GPO 5", "FG_TRIGGEROUT_GPO_5"},
                            Route{"GPO 6", "FG_TRIGGEROUT_GPO_6"},
                            Route{"GPO 7", "FG_TRIGGEROUT_GPO_7"},
                            Route{"Front GPO 0", "FG_TRIGGEROUT_FRONT_GPO_0"},
                            Route{"Front GPO 1", "FG_TRIGGEROUT_FRONT_GPO_1"},
                            Route{"Analyzer 0", "FG_SIGNAL_ANALYZER_0"},
                            Route{"Analyzer 1", "FG_SIGNAL_ANALYZER_1"},
                            Route{"Custom event 0", "FG_CUSTOM_SIGNAL_EVENT_0"},
                            Route{"Custom event 1", "FG_CUSTOM_SIGNAL_EVENT_1"}};

// The sources of the inputs lie at equal distances.
constexpr std::uint64_t FirstInputSource = FG_SIGNAL_GPI_0;
constexpr std::uint64_t InputSourceStep = FG_SIGNAL_GPI_1 - FG_SIGNAL_GPI_0;
static_assert(FG_SIGNAL_FRONT_GPI_3 == FirstInputSource + 11 * InputSourceStep);

struct RouteState {
    std::string source;
    Json sourceValue;
    bool inverted = false;
    std::string level;  ///< "high", "low", or "signal" for pulses too short for a level
};

std::uint64_t readWhole(client::Applet& applet, const Parameter& parameter) {
    std::uint32_t value = 0;
    if (const int code = applet.getUnsigned(parameter.id, value); code != 0) {
        refuse("get of " + parameter.name + " " + inWords(explainGet(code)), explainGet(code));
    }
    return value;
}

/// The camera's signals as sources.
struct CameraSource {
    std::uint64_t source;
    client::Signal signal;
};

constexpr std::array cameraSources{CameraSource{FG_SIGNAL_CAM0_EXSYNC, client::Signal::Exsync},
                                   CameraSource{FG_SIGNAL_CAM0_EXSYNC2, client::Signal::Exsync2},
                                   CameraSource{FG_SIGNAL_CAM0_FLASH, client::Signal::Flash},
                                   CameraSource{FG_SIGNAL_CAM0_LVAL, client::Signal::LineValid},
                                   CameraSource{FG_SIGNAL_CAM0_FVAL, client::Signal::FrameValid}};

/// The present level of a source; "signal" for one whose pulses are too short for a level.
std::string levelOf(const client::SoftBoard& board, std::uint64_t source, bool inverted, std::uint64_t inputs) {
    const auto inWords = [inverted](bool high) { return high != inverted ? "high" : "low"; };
    if (source == GND || source == VCC) {
        return source == VCC ? "high" : "low";  // whatever the polarity
    }
    const auto camera = std::ranges::find(cameraSources, source, &CameraSource::source);
    if (camera != cameraSources.end()) {
        return inWords(board.signal(camera->signal));
    }
    const std::uint64_t input = (source - FirstInputSource) / InputSourceStep;
    return source < FirstInputSource || input >= InputCount ? "signal" : inWords((inputs >> input & 1) != 0);
}

RouteState stateOf(Session& session, const Route& route, std::uint64_t inputs) {
    client::Applet& applet = session.applet();
    const Parameter source = findParameter(applet, std::string(route.parameter) + "_SOURCE");
    const Parameter polarity = findParameter(applet, std::string(route.parameter) + "_POLARITY");
    const std::uint64_t value = readWhole(applet, source);
    const bool fixed = value == GND || value == VCC;
    RouteState state;
    const std::string name = enumeratorOf(source, Value(value));
    state.source = name.empty() ? std::to_string(value) : name;
    state.sourceValue = valueOf(source, Value(value));
    state.inverted = !fixed && readWhole(applet, polarity) == 0;
    state.level = levelOf(session.board(), value, state.inverted, inputs);
    return state;
}

std::uint64_t parseLevels(const std::string& text) {
    const auto levels = parseWholeNumber(trimmed(text));
    if (!levels || levels->negative || levels->magnitude >> InputCount != 0) {
        throw UsageError("\"" + text + "\": the levels of 12 inputs are a number from 0 to 0xFFF");
    }
    return levels->magnitude;
}

void print(Console& console, std::uint64_t inputs, const std::vector<RouteState>& states) {
    console.out << "Inputs\n";
    Rows inputRows;
    for (unsigned input = 0; input < InputCount; ++input) {
        const bool high = (inputs >> input & 1) != 0;
        inputRows.push_back({inputName(input), high ? "--[1]-->" : "--[0]-->", high ? "high" : "low"});
    }
    printRows(console.out, inputRows, "  ");
    console.out << "\nRoutes\n";
    Rows routeRows;
    for (std::size_t i = 0; i < routes.size(); ++i) {
        routeRows.push_back({states[i].source, states[i].inverted ? "--o|not>--" : "----------",
                             std::string("> ") + std::string(routes[i].name), states[i].level});
    }
    printRows(console.out, routeRows, "  ");
}

Json toJson(std::uint64_t inputs, const std::vector<RouteState>& states) {
    Json listeners = object({});
    for (std::size_t i = 0; i < routes.size(); ++i) {
        put(listeners, std::string(routes[i].name),
            object({{"source", states[i].sourceValue}, {"inverted", states[i].inverted}, {"level", states[i].level}}));
    }
    return object({{"inputs", inputsToJson(inputs)}, {"routes", listeners}});
}

ExitStatus io(Session& session, Console& console, const std::string& levels) {
    client::Applet& applet = session.applet();
    if (!levels.empty()) {
        setInputLevels(session.board(), parseLevels(levels));
    }
    const std::uint64_t inputs = readWhole(applet, findParameter(applet, std::to_string(FG_DIGIO_INPUT)));
    std::vector<RouteState> states;
    states.reserve(routes.size());
    for (const Route& route : routes) {
        states.push_back(stateOf(session, route, inputs));
    }
    if (session.options().json) {
        printJson(console, toJson(inputs, states));
    } else {
        print(console, inputs, states);
    }
    return Done;
}

}  // namespace

void addIoVerb(Verbs& verbs) {
    auto levels = std::make_shared<std::string>();
    Verb verb = verbs.add("io", "Draw the digital inputs and which signal feeds which output",
                          "  quillon io\n"
                          "  quillon io --inputs 0x005                      with inputs 0 and 2 at high level\n"
                          "  quillon io --mcf conveyor.mcf                  the routes of a configuration",
                          [levels](Session& session, Console& console) { return io(session, console, *levels); });
    verb.add("--inputs", levels.get(), "Levels to put on the board's inputs, a bit each").shownAs("BITS");
}

}  // namespace quillon::cli
