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

Json toJson(const gige::DeviceState& state) {
    Json json = object({{"streaming", state.streaming},
                        {"frames", state.stream.frames},
                        {"bytes", state.stream.bytes},
                        {"packets", state.stream.packets},
                        {"resent", state.stream.resent},
                        {"gone", state.stream.gone},
                        {"lost", state.stream.lost}});
    if (state.controller) {
        put(json, "controller", gige::inWords(*state.controller));
    }
    if (!state.refusal.empty()) {
        put(json, "refusal", state.refusal);
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
        const double seconds = std::chrono::duration<double>(now - last_).count();
        last_ = now;
        const gige::DeviceState state = device_.state();
        if (json_) {
            printJson(console_, toJson(state));
            console_.out << std::flush;
        } else {
            tell(state, seconds);
        }
        before_ = state;
    }

private:
    void tell(const gige::DeviceState& state, double seconds) {
        if (state.controller != before_.controller) {
            console_.out << (state.controller ? "controlled by " + gige::inWords(*state.controller)
                                              : std::string("nobody controls it"))
                         << '\n';
        }
        if (state.refusal != before_.refusal) {
            console_.out << state.refusal << '\n';
        }
        if (state.streaming && state.stream.frames != before_.stream.frames) {
            const std::uint64_t frames = state.stream.frames - std::min(before_.stream.frames, state.stream.frames);
            const std::uint64_t bytes = state.stream.bytes - std::min(before_.stream.bytes, state.stream.bytes);
            constexpr double Mebibyte = 1 << 20;
            console_.out << std::fixed << std::setprecision(1) << static_cast<double>(frames) / seconds
                         << " frames a second, " << static_cast<double>(bytes) / Mebibyte / seconds << " MiB/s; "
                         << state.stream.resent << " packets sent again, " << state.stream.gone << " too late, "
                         << state.stream.lost << " frames lost\n";
        }
        console_.out << std::flush;
    }

    Console& console_;
    const gige::Device& device_;
    bool json_;
    gige::DeviceState before_;
    Clock::time_point last_;
};

gige::DeviceOptions optionsOf(const Session& session, const ServeArguments& arguments) {
    gige::DeviceOptions options;
    options.interface = arguments.interface;
    options.serial = arguments.serial;
    options.userSet = arguments.userSet;
    if (options.userSet.empty() && session.options().load) {
        options.userSet = session.options().load->string();
    }
    options.bytesPerSecond = parseQuantity(arguments.rate, "B/s");
    if (!(options.bytesPerSecond >= 1e5 && options.bytesPerSecond <= 1e11)) {
        throw UsageError("--rate " + arguments.rate + ": 100kB/s to 100GB/s");
    }
    constexpr std::size_t LongestSerial = 15;
    if (arguments.serial.empty() || arguments.serial.size() > LongestSerial) {
        throw UsageError("--serial \"" + arguments.serial + "\": 1 to 15 characters");
    }
    return options;
}

ExitStatus serve(Session& session, Console& console, const ServeArguments& arguments) {
    const gige::DeviceOptions options = optionsOf(session, arguments);
    const Scene scene = parseScene(arguments.scene);
    const Belt belt = parseBelt(arguments.belt);
    const Faults faults = parseFaults(arguments.faults);
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
            return !Interrupt::came() && !Hangup::came();
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
    verb.add("--user-set", &arguments->userSet, "The configuration that UserSetLoad and UserSetSave use; by default --mcf")
        .shownAs("FILE");
    verb.add("--set", &arguments->assignments, "Set a parameter first; repeatable, in this order")
        .shownAs("NAME=VALUE")
        .oneWordEach();
    verb.add("--scene", &arguments->scene.scene, "What stands in front of the camera, as in grab").shownAs("SCENE");
    addSceneOptions(verb, arguments->scene);
    verb.add("--belt", &arguments->belt.profile, "A belt that moves it, as in grab").shownAs("PROFILE");
    addBeltOptions(verb, arguments->belt);
    verb.add("--fault", &arguments->faults.faults, "What goes wrong, as in grab; repeatable").shownAs("FAULT").oneWordEach();
    addFaultOptions(verb, arguments->faults);
}

}  // namespace quillon::cli
