#include <chrono>
#include <iomanip>

#include "cli/Assignments.h"
#include "cli/Interrupt.h"
#include "cli/Units.h"
#include "cli/Verb.h"
#include "cli/WorldWords.h"
#include "gige/Device.h"
#include "quillon/client/Text.h"

namespace quillon::cli {

namespace {

using Clock = std::chrono::steady_clock;

struct ServeArguments {
    std::string protocol;
    std::string interface = "lo";
    std::string serial = "QUILLON-0";
    std::string rate = "400MB/s";
    std::string duration;
    std::string userSet;
    std::vector<std::string> assignments;
    SceneWords scene;
    BeltWords belt;
    FaultWords faults;
};

void tellWhere(Console& console, const gige::Device& device) {
    const gige::Interface& interface = device.interface();
    console.out << "Quillon " << device.serial() << " is a GigE Vision device at "
                << gige::inWords({interface.address, gige::ControlPort}) << " (" << interface.name << ").\n"
                << "  arv-tool-0.8                                   finds it\n"
                << "  arv-viewer-0.8                                 shows its pictures\n"
                << "  gst-launch-1.0 aravissrc camera-name=Quillon-Quillon-" << device.serial()
                << " ! videoconvert ! autovideosink\n"
                << "Ctrl-C ends it.\n"
                << std::flush;
    if (!interface.loopback) {
        console.err << "warning: the protocol knows no passwords: whoever reaches " << interface.name
                    << " can find this device, set its parameters, read and write the files that they name, and "
                       "receive its pictures\n";
    }
}

/// What has been added to a number of the stream; it begins at 0 with each acquisition.
std::uint64_t since(std::uint64_t before, std::uint64_t now) {
    return now < before ? now : now - before;
}

/// What came in a time.
struct Flow {
    Flow(const gige::DeviceState& before, const gige::DeviceState& now, double seconds)
        : frames(static_cast<double>(since(before.stream.frames, now.stream.frames)) / seconds),
          bytes(static_cast<double>(since(before.stream.bytes, now.stream.bytes)) / seconds) {}

    double frames;  ///< a second
    double bytes;   ///< a second
};

Json toJson(const gige::Device& device, const gige::DeviceState& state, const Flow& flow) {
    Json json = object({{"serial", device.serial()},
                        {"at", gige::inWords({device.interface().address, gige::ControlPort})},
                        {"streaming", state.streaming},
                        {"framesPerSecond", flow.frames},
                        {"bytesPerSecond", flow.bytes},
                        {"frames", state.stream.frames},
                        {"bytes", state.stream.bytes},
                        {"packets", state.stream.packets},
                        {"resent", state.stream.resent},
                        {"gone", state.stream.gone},
                        {"lost", state.stream.lost},
                        {"refusals", state.refusals}});
    if (state.controller) {
        put(json, "controller", gige::inWords(*state.controller));
    }
    if (state.refusals != 0) {
        put(json, "refusal", state.refusal);
    }
    if (!state.stream.failure.empty()) {
        put(json, "failure", state.stream.failure);
    }
    return json;
}

/// Tells what has changed, once a second at most.
class Reporter {
public:
    Reporter(Console& console, const gige::Device& device, bool json)
        : console_(console), device_(device), json_(json) {}

    void look() {
        constexpr std::chrono::seconds Interval{1};
        const Clock::time_point now = Clock::now();
        if (now - last_ < Interval) {
            return;
        }
        const gige::DeviceState state = device_.state();
        const Flow flow(before_, state, std::chrono::duration<double>(now - last_).count());
        last_ = now;
        if (json_) {
            printJson(console_, toJson(device_, state, flow));
        } else {
            tell(state, flow);
        }
        console_.out << std::flush;
        before_ = state;
    }

private:
    void tell(const gige::DeviceState& state, const Flow& flow) {
        if (state.controller != before_.controller) {
            console_.out << (state.controller ? "controlled by " + gige::inWords(*state.controller)
                                              : std::string("nobody controls it"))
                         << '\n';
        }
        if (state.refusals != before_.refusals) {
            console_.out << state.refusal << '\n';
        }
        if (state.stream.failure != before_.stream.failure && !state.stream.failure.empty()) {
            console_.err << "the stream has ended: " << state.stream.failure << '\n';
        }
        if (flow.frames > 0.0) {
            constexpr double Mebibyte = 1 << 20;
            console_.out << std::fixed << std::setprecision(1) << flow.frames << " frames a second, "
                         << flow.bytes / Mebibyte << " MiB/s; " << state.stream.resent << " packets sent again, "
                         << state.stream.gone << " requests for more in vain, " << state.stream.lost
                         << " frames lost\n";
        }
    }

    Console& console_;
    const gige::Device& device_;
    bool json_;
    gige::DeviceState before_;
    Clock::time_point last_;
};

/// Parses the word of an option; an error names both.
double numberOf(const std::string& option, const std::string& word, double (*parse)(std::string_view)) {
    try {
        return parse(word);
    } catch (const UsageError& error) {
        throw UsageError(option + " " + word + ": " + error.what());
    }
}

double rateOf(const std::string& words) {
    constexpr double Least = 1e5;  // bytes a second
    constexpr double Most = 1e11;
    const double rate = numberOf("--rate", words, [](std::string_view word) { return parseQuantity(word, "B/s"); });
    if (!(rate >= Least && rate <= Most)) {
        throw UsageError("--rate " + words + ": 100kB/s to 100GB/s");
    }
    return rate;
}

gige::DeviceOptions optionsOf(const Session& session, const ServeArguments& arguments) {
    gige::DeviceOptions options;
    options.interface = arguments.interface;
    options.serial = arguments.serial;
    options.userSet = arguments.userSet;
    if (options.userSet.empty() && session.options().load) {
        options.userSet = session.options().load->string();
    }
    options.bytesPerSecond = rateOf(arguments.rate);
    constexpr std::size_t LongestSerial = 15;
    if (arguments.serial.empty() || arguments.serial.size() > LongestSerial) {
        throw UsageError("--serial \"" + arguments.serial + "\": 1 to 15 characters");
    }
    return options;
}

Clock::time_point endOf(const ServeArguments& arguments) {
    if (arguments.duration.empty()) {
        return Clock::time_point::max();
    }
    const double seconds = numberOf("--for", arguments.duration, parseSeconds);
    constexpr double Week = 7.0 * 24 * 3600;
    if (!(seconds > 0.0 && seconds <= Week)) {
        throw UsageError("--for " + arguments.duration + ": more than 0 s, and at most a week");
    }
    return Clock::now() + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
}

ExitStatus serve(Session& session, Console& console, const ServeArguments& arguments) {
    const gige::DeviceOptions options = optionsOf(session, arguments);
    const Scene scene = parseScene(arguments.scene);
    const Belt belt = parseBelt(arguments.belt);
    const Faults faults = parseFaults(arguments.faults);
    const Clock::time_point end = endOf(arguments);
    assign(session.applet(), arguments.assignments);
    session.board().record(false);
    apply(session.board(), scene);
    apply(session.board(), session.applet(), belt, session.belt());
    apply(session.board(), faults);
    const Interrupt interrupt;
    const Hangup hangup;
    try {
        gige::Device device(session.applet(), session.board(), options);
        const bool json = session.options().json;
        console.jsonPerLine = true;
        if (!json) {
            tellWhere(console, device);
        }
        Reporter reporter(console, device, json);
        device.run([&] {
            reporter.look();
            return Clock::now() < end && !Interrupt::came() && !Hangup::came();
        });
    } catch (const std::runtime_error& error) {
        throw RefusedError(std::string("serve: ") + error.what());
    }
    return Done;
}

}  // namespace

void addServeVerb(Verbs& verbs) {
    auto arguments = std::make_shared<ServeArguments>();
    Verb verb = verbs.add(
        "serve", "Be a camera for programs that look at cameras: a GigE Vision device with the frames of the board",
        "  quillon serve gige                             on this computer alone\n"
        "  quillon serve gige --scene examples/conveyor/part.png --tile\n"
        "  quillon serve gige --interface eth0            for the network, which knows no passwords\n"
        "  quillon serve gige --json                      a line about its state each second\n"
        "\n"
        "Viewers find it by its serial number, and see the applet's parameters beside the standard names (Width, "
        "ExposureTime ...).\n"
        "One of them controls it; others may read. Ctrl-C ends it.",
        [arguments](Session& session, Console& console) { return serve(session, console, *arguments); });
    verb.add("PROTOCOL", &arguments->protocol, "gige: GigE Vision").required().oneOf({"gige"});
    verb.add("--interface", &arguments->interface, "The interface of the network; by default lo, this computer alone")
        .shownAs("NAME");
    verb.add("--serial", &arguments->serial, "The serial number that it is found by; by default QUILLON-0")
        .shownAs("SERIAL");
    verb.add("--rate", &arguments->rate, "How fast packets leave at most; by default 400MB/s").shownAs("RATE");
    verb.add("--for", &arguments->duration, "End by itself after this time, as 90s or 500ms; a bare number is seconds")
        .shownAs("TIME");
    verb.add("--user-set", &arguments->userSet,
             "The configuration that UserSetLoad and UserSetSave use; by default --mcf")
        .shownAs("FILE");
    verb.add("--set", &arguments->assignments, "Set a parameter first; repeatable, in this order")
        .shownAs("NAME=VALUE")
        .oneWordEach();
    verb.add("--scene", &arguments->scene.scene, "What stands in front of the camera, as in grab").shownAs("SCENE");
    addSceneOptions(verb, arguments->scene);
    verb.add("--belt", &arguments->belt.profile, "A belt that moves it, as in grab").shownAs("PROFILE");
    addBeltOptions(verb, arguments->belt);
    verb.add("--fault", &arguments->faults.faults, "What goes wrong, as in grab; repeatable")
        .shownAs("FAULT")
        .oneWordEach();
    addFaultOptions(verb, arguments->faults);
}

}  // namespace quillon::cli
