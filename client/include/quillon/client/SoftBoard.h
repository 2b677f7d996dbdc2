#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "quillon/client/Export.h"
#include "quillon/client/Scene.h"

struct IXdevice;

namespace quillon::client {

enum class Direction { Read = 0, Write = 1, Call = 2 };

/// What can be done with a register of the design.
enum class RegisterAccess { Read = 0, Write = 1, ReadWrite = 2 };

/// One entry of a software board's transcript: an access to a parameter or a register, or a call of an SDK function.
struct QUILLON_CLIENT_API Access {
    std::uint64_t sequence = 0;
    Direction direction = Direction::Read;
    std::int32_t id = 0;
    std::int32_t dma = 0;
    std::int32_t type = 0;
    std::int64_t result = 0;  ///< the code or number that the caller got
    std::string name;         ///< of the parameter, "register NAME", or of the function
    std::string value;        ///< integers in decimal, texts as they are, fields as "[index..last]=v0,v1,..."

    /// The entry as a line: "NAME = VALUE" for a write, "NAME ? VALUE" for a read, "NAME(VALUE)" for a call, with
    /// " ! CODE" behind it if it failed.
    std::string line() const;
};

/// The camera's signals, under their numbers among the design's signal selects.
enum class Signal : unsigned { Exsync = 1, Exsync2 = 2, Flash = 3, LineValid = 4, FrameValid = 5 };

/// An edge of a signal or an output, or an event of the design.
struct QUILLON_CLIENT_API SignalChange {
    enum class Kind { Signal = 0, Output = 1, Event = 2 };

    std::uint64_t tick = 0;  ///< of 8 ns on the board's clock
    Kind kind = Kind::Signal;
    unsigned number = 0;  ///< of the signal among the design's selects, of the output; of an event the bit of its mask
    bool high = false;    ///< the level from now on
    double microseconds() const { return static_cast<double>(tick) / 125.0; }
};

/// What a board's digital signals did, in order.
struct QUILLON_CLIENT_API SignalRecording {
    std::vector<SignalChange> changes;
    std::map<unsigned, std::string> events;  ///< the design's names of those that came, by their bits
    std::uint64_t lost = 0;                  ///< changes that came when it was full
};

/// What moves a board's clock; advanceSignals does in every mode.
enum class ClockMode {
    Stepped = 0,  ///< nothing else: two runs give the same bytes
    Real = 1,     ///< the time of day
    Free = 2,     ///< whoever waits for a frame: time jumps from event to event, and nothing is lost
    Auto = 3,     ///< the time of day while an acquisition runs, nothing otherwise; the mode of a new board
};

/// The software board's library with what belongs to the process and to no board. Copies share it.
class QUILLON_CLIENT_API SoftBoardLibrary {
public:
    /// Loads libsoftboard.so from the folder of the stand-ins; throws LibraryError.
    explicit SoftBoardLibrary(const std::filesystem::path& standInDirectory);

    /// Loader calls, and SDK calls that name no board.
    std::vector<Access> transcript() const;
    void clearTranscript();
    /// Plans that the `nth` call (from 1; 0 is every call) of a function that knows no board returns `code`, or null.
    void planCallFault(const std::string& function, unsigned nth, std::int64_t code);
    void clearFaults();
    /// The number that the SDK's Fg_getLastErrorNumber answers for a null handle.
    void setSdkError(int number);

    std::uint64_t callCount(const std::string& function) const;  ///< calls of a stand-in function in this process
    std::uint64_t liveDesigns() const;
    std::uint64_t liveHandles() const;

private:
    friend class SoftBoard;
    friend class FrameMemory;
    struct Loaded;
    std::shared_ptr<const Loaded> loaded_;
};

/// A frame grabber in software, from opening to closing. Every applet on it must be gone before it is.
///
/// What a call refuses (an unknown name, a value that doesn't fit) is thrown as CallError with the board's code.
class QUILLON_CLIENT_API SoftBoard {
public:
    /// A board of this installation (see findInstallation). Throws LibraryError if there is none.
    SoftBoard();
    explicit SoftBoard(const std::filesystem::path& standInDirectory);
    explicit SoftBoard(SoftBoardLibrary library);

    /// What Std_entry takes.
    IXdevice* device() const { return board_.get(); }
    /// A board goes wherever a device does: Applet(library, board).
    operator IXdevice*() const { return device(); }
    SoftBoardLibrary& library() { return library_; }

    std::vector<Access> transcript() const;
    void clearTranscript();
    /// Switches recording, as for a benchmark; a new board records.
    void record(bool enabled);

    /// The accesses to parameters and registers since the last clearTranscript, as Access::line(): reads and writes,
    /// the writes alone, the reads alone.
    std::vector<std::string> accesses() const;
    std::vector<std::string> writes() const;
    std::vector<std::string> reads() const;
    /// The calls of SDK functions, as Access::line().
    std::vector<std::string> calls() const;

    /// Plans that the `nth` access (from 1; 0 is every access) from now on to `name` answers `code` and does nothing
    /// else. With Direction::Call `name` is a function.
    void planFault(const std::string& name, Direction direction, unsigned nth, std::int64_t code);
    /// Plans it for the `nth` access of any name and either direction from now on.
    void planFaultAt(unsigned nth, std::int64_t code);
    void clearFaults();

    /// The hardware's side: values are read and changed without a trace in the transcript.
    void setInteger(const std::string& name, std::int64_t value);
    std::int64_t integer(const std::string& name) const;
    void setDouble(const std::string& name, double value);
    double real(const std::string& name) const;
    void setText(const std::string& name, const std::string& value);
    std::string text(const std::string& name) const;
    void setElement(const std::string& name, std::size_t index, std::int64_t value);
    std::int64_t element(const std::string& name, std::size_t index) const;
    /// Takes a parameter out of the design, so that its name no longer resolves.
    void hideParameter(const std::string& name);
    /// Puts `value` into a register, by its name in the design.
    void setRegister(const std::string& name, std::uint64_t value);
    std::uint64_t registerValue(const std::string& name) const;
    RegisterAccess registerAccess(const std::string& name) const;
    /// Lets pictures arrive at once, if an acquisition runs.
    void deliverPictures(std::int64_t count);

    /// Sets what moves the clock. `speed`: seconds of the board in a second of the day, above 0 and at most 1000.
    void setClock(ClockMode mode, double speed = 1.0);
    /// Puts red first in the pixels of frames, or blue, as the hardware has it.
    void setRedFirst(bool redFirst);
    /// Moves the clock of the digital signals on, by at most 60 s at once; it stands still otherwise.
    void advanceSignals(double microseconds);
    /// Moves it on to the next time that the design raises an event, by its name in the design; says whether it did
    /// within that time.
    bool advanceToEvent(const std::string& event, double microseconds);
    double signalTime() const;  ///< µs since the design was put on the board
    /// Gives an input a level: 0 to 7 are GPI 0 to 7, 8 to 11 are front GPI 0 to 3.
    void setInput(unsigned input, bool high);
    /// The level of an output: 0 is the camera trigger, 1 to 8 are GPO 0 to 7, 9 and 10 are front GPO 0 and 1.
    bool output(unsigned output) const;
    bool signal(Signal signal) const;    ///< the level of one of the camera's signals
    bool signal(unsigned select) const;  ///< the level of the signal that the design selects by this number, 0 to 36
    /// Records the first `most` changes of the signals from now on, at most 4000000; with 0 none any more.
    void recordSignals(std::size_t most);
    SignalRecording recordedSignals() const;
    std::uint64_t lostChanges() const;  ///< those that came when the recording was full
    /// How often the design has raised an event, by its name in the design.
    std::uint64_t eventCount(const std::string& event) const;

    // What stands in front of the camera stays there when another design is put on the board; a change lands between
    // lines. What is refused here and among the faults below is thrown with the board's own words.

    /// Shows a pattern: "bars" (the scene of a new board), "ramp", "checker", "noise" or "noise:SEED", "grey" or
    /// "grey:V" with V from 0 to 255.
    void scenePattern(const std::string& pattern);
    /// Shows a picture: a PNG or a PNM file. Its columns are the camera's pixels, its rows 1 / `pixelsPerMm` apart
    /// along the belt, from 0 mm on. `tiled`: it is repeated in both directions; otherwise all is black around it.
    /// @param pixelsPerMm  0.001 to 1000
    void scenePicture(const std::filesystem::path& file, bool tiled, double pixelsPerMm);
    /// Shows what `draw` draws. It is called on the thread that draws the frame, once for each line in the order of the
    /// frames, and kept until the board closes.
    void sceneCallback(DrawLine draw);
    /// A new board's light is Light().
    void light(const Light& light);
    /// The seed of the light's noise, 1 for a new board: the same seed, ticks and scene give the same bytes.
    void sceneSeed(std::uint64_t seed);
    /// Starts a belt at 0 mm, in place of an earlier one; behind the last of the moves it stands. Without any there is
    /// no belt from now on, and the scene moves by one pixel with every line.
    void belt(std::span<const BeltMove> moves, const Encoder& encoder = {});
    /// A light barrier: `input` is high while a part is in front of it, from `firstMm` to `firstMm` + `lengthMm` of the
    /// belt, and again every `pitchMm`. With a pitch of 0 one part comes, with a length of 0 there is no barrier at
    /// this input any more.
    void barrier(unsigned input, double firstMm, double pitchMm, double lengthMm);
    double beltPosition() const;  ///< mm; 0 without a belt

    /// Plans what befalls the `nth` line (from 1; 0 is every line) that comes into the path from now on.
    void planLineFault(std::uint64_t nth, LineFault fault);
    /// Plans what befalls the `nth` frame (from 1; 0 is every frame) that begins from now on in an acquisition with a
    /// memory. `amount`: the lines that are left of a truncated one, at least 1, or the µs of a stall, up to 60 s.
    void planFrameFault(std::uint64_t nth, FrameFault fault, double amount = 0);
    /// Plans that the camera or the link is gone `afterUs` from now, and back `forUs` later.
    void planOutage(Outage outage, double afterUs, double forUs = Forever);
    /// Takes the camera away or brings it back.
    void connectCamera(bool connected);
    /// Takes the link to the host down or up.
    void setLink(bool up);
    /// How many bytes of pictures reach the host in a second of the board's time: above 0, infinite for at once.
    void setDmaRate(double bytesPerSecond);

    /// What went wrong last in a call about the scene or its faults, or with a picture that a debug point should have
    /// inserted; empty if nothing has.
    std::string lastMessage() const;

    /// The number that the SDK's Fg_getLastErrorNumber answers for this board.
    void setSdkError(int number);

private:
    friend class FrameMemory;
    struct Close {
        std::shared_ptr<const SoftBoardLibrary::Loaded> loaded;
        void operator()(IXdevice* board) const;
    };
    const SoftBoardLibrary::Loaded& board() const { return *library_.loaded_; }
    std::vector<std::string> lines(std::optional<Direction> direction) const;
    /// Throws CallError, with the board's last message, for a code other than 0.
    void expectTaken(const std::string& function, int code) const;

    SoftBoardLibrary library_;
    std::vector<std::unique_ptr<DrawLine>> scenes_;  ///< a frame may be drawn with an earlier one still
    std::unique_ptr<IXdevice, Close> board_;
};

}  // namespace quillon::client
