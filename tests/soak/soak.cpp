/// @file
/// Hours of acquisition in real time: 20,000 lines of 4096 pixels a second, while trigger settings and parameters
/// change from four threads and planned faults strike. A round is one acquisition, and ends with a balance of its
/// counts (Counts.h). What the process holds in memory after a round is held against what it held after the first ones.
///
///     soak [MINUTES]
///
/// Exit status 0 if all balances and memory stays within 1 %. A computer that cannot follow makes the board lag behind
/// or lose frames, which the counts tell.
#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <charconv>
#include <chrono>
#include <fstream>
#include <functional>
#include <iostream>
#include <mutex>
#include <random>
#include <string_view>
#include <thread>

#include "client/testing/BuiltApplet.h"
#include "quillon/client/Errors.h"
#include "quillon/client/Frames.h"
#include "tests/soak/Counts.h"

namespace quillon::soak {
namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;
using Random = std::mt19937;

constexpr std::size_t Width = 4096;
constexpr std::size_t MostLines = 1024;  // of a frame
constexpr std::size_t MostBytes = 3 * Width * MostLines;
constexpr unsigned Buffers = 4;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool MemoryIsOurs = false;  // a sanitizer keeps its own
#else
constexpr bool MemoryIsOurs = true;
#endif

struct Setting {
    const char* name;
    client::Value value;
};

/// A way to make lines and images.
struct Round {
    const char* name;
    std::vector<Setting> settings;
    Selection selection;
    bool changesTriggers = false;  ///< while it runs
    bool dozes = false;            ///< the host sleeps now and then, so that the board's memory fills
    /// Every line belongs to a frame, and every frame counts.
    bool everyLineCounts() const { return !changesTriggers && selection.period == 1 && settings.empty(); }
};

// What a round begins with, and goes back to.
const std::vector<Setting> freeRunning{
    {"FG_LINETRIGGERMODE", "GRABBER_CONTROLLED"},
    {"FG_LINEPERIODE", 50},
    {"FG_LINEEXPOSURE", 30},
    {"FG_IMGTRIGGERMODE", "FREE_RUN"},
    {"FG_IMGTRIGGERINSRC", "TRGINSRC_GPI_2"},
    {"FG_IMGTRIGGERON", "FG_ON"},
    {"FG_IMGTRIGGERGATEDELAY", 0},
    {"FG_SHAFTENCODERON", "FG_OFF"},
    {"FG_IMG_SELECT", 0},
    {"FG_IMG_SELECT_PERIOD", 1},
    {"FG_HEIGHT", 1024},
};

const std::array rounds{
    Round{"lines and images by themselves", {}, {}},
    Round{"encoder and light barrier",
          {{"FG_LINETRIGGERMODE", "ASYNC_TRIGGER"},
           {"FG_SHAFTENCODERON", "FG_ON"},
           {"FG_IMGTRIGGERMODE", "ASYNC_TRIGGER"},
           {"FG_IMGTRIGGERGATEDELAY", 50}},
          {}},
    Round{"images as long as their gate", {{"FG_IMGTRIGGERMODE", "ASYNC_GATED"}}, {}},
    Round{"one image of three", {{"FG_IMG_SELECT_PERIOD", 3}, {"FG_IMG_SELECT", 1}}, {3, 1}},
    Round{"triggers that change", {}, {}, true},
    Round{"a host that dozes", {}, {}, false, true},
};

/// Bytes of this process in memory, but for those that the allocator keeps without need.
std::size_t residentBytes() {
    malloc_trim(0);
    std::ifstream status("/proc/self/statm");
    std::size_t all = 0;
    std::size_t resident = 0;
    status >> all >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

/// Writes parameters from threads of its own, again and again, while it lives.
class Writers {
public:
    explicit Writers(client::Applet& applet) : applet_(applet) {
        const auto pick = [](Random& random, std::initializer_list<int> values) {
            return *(values.begin() + std::uniform_int_distribution<std::size_t>(0, values.size() - 1)(random));
        };
        const auto share = [](Random& random) { return std::uniform_real_distribution(0.0, 2.0)(random); };
        start([=](client::Applet& target, Random& random) {
            target["FG_SCALINGFACTOR_RED"] = share(random);
            target["FG_SCALINGFACTOR_GREEN"] = share(random);
            target["FG_SCALINGFACTOR_BLUE"] = share(random);
        });
        start([=](client::Applet& target, Random& random) {
            target["FG_LUT_ENABLE"] = pick(random, {0, 1});
            target["FG_PROCESSING_GAIN"] = 0.5 + share(random);
        });
        start([=](client::Applet& target, Random& random) {
            target["FG_XOFFSET"] = pick(random, {0, 4, 64, 1024});
            target["FG_BITALIGNMENT"] = pick(random, {0, 1});
        });
        start([=, this](client::Applet& target, Random& random) {
            target["FG_LINEEXPOSURE"] = pick(random, {10, 20, 30, 40});
            target["FG_LINETRIGGERDELAY"] = pick(random, {0, 5});
            if (changesTriggers_) {
                target["FG_IMGTRIGGERMODE"] = pick(random, {FREE_RUN, ASYNC_TRIGGER, ASYNC_GATED});
                target["FG_HEIGHT"] = pick(random, {256, 512, 1024});
                target["FG_IMGTRIGGERGATEDELAY"] = pick(random, {0, 100});
            }
        });
    }
    Writers(const Writers&) = delete;
    Writers& operator=(const Writers&) = delete;
    ~Writers() {
        ends_ = true;
        for (std::thread& thread : threads_) {
            thread.join();
        }
    }

    /// Whether triggers change from now on. Afterwards no such write is under way.
    void changeTriggers(bool change) {
        const std::lock_guard guard(triggers_);
        changesTriggers_ = change;
    }
    std::uint64_t writes() const { return writes_; }
    std::string refused() {
        const std::lock_guard guard(triggers_);
        return refused_;
    }

private:
    void start(std::function<void(client::Applet&, Random&)> write) {
        const auto seed = static_cast<Random::result_type>(threads_.size());
        threads_.emplace_back([this, write = std::move(write), seed] {
            Random random(seed);
            const bool isLast = seed == 3;
            while (!ends_) {
                std::this_thread::sleep_for(std::chrono::milliseconds(5));
                carryOut(write, random, isLast);
            }
        });
    }
    void carryOut(const std::function<void(client::Applet&, Random&)>& write, Random& random, bool holdsTriggers) {
        std::unique_lock lock(triggers_, std::defer_lock);
        if (holdsTriggers) {
            lock.lock();
        }
        try {
            write(applet_, random);
            ++writes_;
        } catch (const client::Error& error) {
            if (!holdsTriggers) {
                lock.lock();
            }
            refused_ = error.what();
        }
    }

    client::Applet& applet_;
    std::mutex triggers_;
    bool changesTriggers_ = false;
    std::string refused_;
    std::atomic<std::uint64_t> writes_ = 0;
    std::atomic<bool> ends_ = false;
    std::vector<std::thread> threads_;
};

constexpr const char* MemoryAddressWidth = "Device1_Process0_Buffer_0_DRAM_DRAM_A_0_RamAddressWidth";
constexpr const char* OverflowEvent = "Device1_Process0_Overflow_Overflow";

class Soak {
public:
    explicit Soak(Seconds time)
        : time_(time), round_(std::clamp<Seconds>(time / 24, Seconds(0.3), Seconds(20))), began_(Clock::now()) {
        built_.board.record(false);
        built_.board.setInteger(MemoryAddressWidth, 18);  // 50 MB, a fifth of a second's pictures
        built_.board.scenePattern("noise:1");
        applet_["FG_WIDTH"] = int{Width};
        set(freeRunning);
        stopLines();
        built_.board.setClock(client::ClockMode::Real);
    }

    /// Whether all was as it has to be.
    bool run() {
        std::cout << "rounds of " << round_.count() << " s: 20000 lines of " << Width << " pixels a second\n";
        std::size_t warm = 0;
        for (std::size_t number = 0; number < 4 * rounds.size() || Clock::now() - began_ < time_; ++number) {
            play(rounds.at(number % rounds.size()));
            most_ = std::max(most_, residentBytes());
            if (number < 2 * rounds.size() || Clock::now() - began_ < time_ / 10) {
                warm = most_;
            }
            tellProgress();
        }
        return verdict(warm);
    }

private:
    void set(const std::vector<Setting>& settings) {
        for (const Setting& setting : settings) {
            applet_[setting.name] = setting.value;
        }
    }
    void stopLines() { applet_["FG_EXSYNCON"] = "FG_OFF"; }

    /// Waits until so much of the board's time has passed.
    void letPass(double microseconds) {
        const double end = built_.board.signalTime() + microseconds;
        while (built_.board.signalTime() < end) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }

    /// What moves in front of the camera, and what goes wrong in this round.
    void prepare(const Round& round) {
        client::SoftBoard& board = built_.board;
        board.clearFaults();
        board.belt(std::array{client::BeltMove{client::Forever, 2000}}, {10, 0, 1});
        board.barrier(2, 100, 150, 100);
        board.planLineFault(2000, client::LineFault::Invert);
        board.planFrameFault(3, client::FrameFault::Lose);
        board.planFrameFault(4, client::FrameFault::Truncate, 100);
        board.planFrameFault(5, client::FrameFault::Stall, 20'000);
        if (!round.everyLineCounts()) {
            board.planLineFault(3000, client::LineFault::Drop);
            board.planLineFault(4000, client::LineFault::Repeat);
        }
        const double microseconds = round_.count() * 1e6;
        board.planOutage(client::Outage::Link, microseconds * 0.4, microseconds * 0.05);
        board.planOutage(client::Outage::Camera, microseconds * 0.6, microseconds * 0.05);
    }

    /// What the board counts of its own accord.
    Counts countersNow() {
        Counts counts;
        counts.closed = built_.board.registerValue("FrameCounter");
        counts.lines = built_.board.registerValue("LineCounter");
        counts.overflows = built_.board.eventCount(OverflowEvent);
        return counts;
    }
    void readCounters(const client::Acquisition& acquisition, const Counts& before, Counts& counts) {
        const Counts now = countersNow();
        // Registers begin anew when they are full; the shorter one has 32 bits.
        counts.closed = static_cast<std::uint32_t>(now.closed - before.closed);
        counts.lines = static_cast<std::uint32_t>(now.lines - before.lines);
        counts.overflows = now.overflows - before.overflows;
        counts.lost = acquisition.lost();
        counts.lostLines = acquisition.lostLines();
        counts.faults = acquisition.faults();
    }

    void play(const Round& round) {
        set(freeRunning);
        set(round.settings);
        prepare(round);
        client::Acquisition acquisition(applet_, memory_, -1, 1);
        const Counts before = countersNow();
        Counts counts;
        applet_["FG_EXSYNCON"] = "FG_ON";
        writers_.changeTriggers(round.changesTriggers);
        const Clock::time_point end = Clock::now() + std::chrono::duration_cast<Clock::duration>(round_);
        while (Clock::now() < end) {
            take(acquisition, counts, round.dozes);
        }
        writers_.changeTriggers(false);
        stopLines();
        letPass(1000);                                   // the line that runs has come then
        applet_["FG_IMGTRIGGERMODE"] = "ASYNC_TRIGGER";  // a change ends the image that runs
        drain(acquisition, before, round.selection, counts);
        add(round, counts);
    }

    /// The next frame, if it comes within a second; whether it did.
    bool take(client::Acquisition& acquisition, Counts& counts, bool dozes) {
        try {
            const client::FrameDescription& about = acquisition.next()->description();
            ++counts.delivered;
            counts.deliveredLines += about.lines;
            counts.lostBefore += about.lostBefore;
            counts.lastImage = about.image;
            if (dozes && counts.delivered % 4 == 0) {
                std::this_thread::sleep_for(std::chrono::milliseconds(700));
            }
            return true;
        } catch (const client::FrameError& error) {
            if (!error.timedOut()) {
                throw;
            }
            return false;
        }
    }

    /// Takes what is on its way when lines have ended: what has to come, and then whatever the board holds. A frame
    /// that has to come and does not is given up after a while.
    void drain(client::Acquisition& acquisition, const Counts& before, Selection selection, Counts& counts) {
        constexpr double patience = 3e6;  // microseconds of the board, which waits for a slow computer
        for (double last = built_.board.signalTime(); built_.board.signalTime() - last < patience;) {
            readCounters(acquisition, before, counts);
            const bool owesNone = counts.delivered >= passed(counts.closed - counts.lost, selection);
            const auto came = static_cast<std::uint64_t>(applet_.lastPicture(0, memory_.pointer()));
            if (owesNone && came == counts.delivered && acquisition.bytesWaiting() == 0) {
                return;
            }
            if (take(acquisition, counts, false)) {
                last = built_.board.signalTime();
            }
        }
    }

    void add(const Round& round, const Counts& counts) {
        for (const std::string& sentence : imbalances(counts, round.selection, round.everyLineCounts())) {
            faults_.push_back(std::string(round.name) + ": " + sentence);
            std::cout << faults_.back() << '\n';
        }
        all_.closed += counts.closed;
        all_.lines += counts.lines;
        all_.delivered += counts.delivered;
        all_.lost += counts.lost;
        all_.deliveredLines += counts.deliveredLines;
        all_.lostLines += counts.lostLines;
        all_.faults += counts.faults;
        all_.overflows += counts.overflows;
    }

    void tell() {
        std::cout << std::chrono::duration_cast<std::chrono::seconds>(Clock::now() - began_).count()
                  << " s: " << all_.lines << " lines, " << all_.closed << " frames, of which " << all_.delivered
                  << " came and " << all_.lost << " were lost; " << all_.overflows << " overflows, " << all_.faults
                  << " faults, " << writers_.writes() << " writes, " << residentBytes() / 1024 << " KiB in memory\n"
                  << std::flush;
    }
    void tellProgress() {
        if (Clock::now() - told_ >= std::chrono::minutes(1)) {
            told_ = Clock::now();
            tell();
        }
    }

    bool verdict(std::size_t warm) {
        tell();
        if (MemoryIsOurs && static_cast<double>(most_) > 1.01 * static_cast<double>(warm)) {
            faults_.push_back("memory grew from " + std::to_string(warm / 1024) + " KiB to " +
                              std::to_string(most_ / 1024) + " KiB");
        }
        if (const std::string refused = writers_.refused(); !refused.empty()) {
            faults_.push_back("a write was refused: " + refused);
        }
        if (all_.delivered == 0) {
            faults_.emplace_back("no frame came");
        }
        for (const std::string& fault : faults_) {
            std::cout << "WRONG: " << fault << '\n';
        }
        if (faults_.empty()) {
            std::cout << "all counts balance" << (MemoryIsOurs ? ", and memory stayed within 1 %\n" : "\n");
        }
        return faults_.empty();
    }

    Seconds time_;
    Seconds round_;
    Clock::time_point began_;
    Clock::time_point told_ = began_;
    client::testing::BuiltApplet built_;
    client::Applet& applet_ = built_.applet;
    client::FrameMemory memory_{built_.board, MostBytes, Buffers};
    Writers writers_{built_.applet};
    Counts all_;
    std::size_t most_ = 0;  ///< bytes in memory
    std::vector<std::string> faults_;
};

/// Nothing for a text that is no time of more than 0 minutes.
std::optional<Seconds> minutesOf(std::string_view text) {
    double minutes = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), minutes);
    if (failure != std::errc{} || end != text.data() + text.size() || !(minutes > 0 && minutes < 1e6)) {
        return std::nullopt;
    }
    return Seconds(minutes * 60);
}

}  // namespace
}  // namespace quillon::soak

int main(int argc, char** argv) {
    using namespace quillon;
    const auto time = argc > 2 ? std::nullopt : soak::minutesOf(argc == 2 ? argv[1] : "60");
    if (!time) {
        std::cerr << "usage: soak [MINUTES], by default 60\n";
        return 2;
    }
    // Whatever a thread frees another one takes, and large blocks go back at once: what is left then grows with a leak
    // alone.
    mallopt(M_ARENA_MAX, 1);
    mallopt(M_MMAP_THRESHOLD, 32 * 1024);
    try {
        return soak::Soak(*time).run() ? 0 : 1;
    } catch (const client::Error& error) {
        std::cerr << "WRONG: " << error.what() << '\n';
        return 1;
    }
}
