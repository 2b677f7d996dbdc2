/// @file
/// Loads a configuration file of any bytes into an applet on a software board: it is loaded or refused, the state that
/// it leaves can be saved, and a good file then brings back the state at start to the byte.
#include <iterator>
#include <string>

#include "applet/Exports.h"
#include "fuzz/InputFile.h"
#include "softboard/softboard.h"

namespace {

using quillon::fuzz::expect;
using quillon::fuzz::InputFile;

constexpr int Unreadable = -5000;

/// The applet of the whole run, on a board that records nothing.
class OpenApplet {
public:
    OpenApplet() {
        IXdevice* board = softboard_open();
        softboard_transcript_record(nullptr, 0);
        softboard_transcript_record(board, 0);
        int status = -1;
        wrapper_ = Std_entry(board, &status, 0);
        expect(wrapper_ != nullptr && status == 0);
        start_ = save();
    }

    int load(const InputFile& file) { return Fg_loadConfig(&wrapper_, file.name()); }
    int lastError() { return Fg_getLastErrorNumber(&wrapper_); }

    std::string save() {
        const InputFile file(".saved.mcf", nullptr, 0);
        expect(Fg_saveConfig(&wrapper_, file.name()) == 0);
        return file.bytes();
    }

    /// Loads the state at start, which undoes whatever was loaded before.
    void restore() {
        const InputFile file(".start.mcf", reinterpret_cast<const std::uint8_t*>(start_.data()), start_.size());
        expect(load(file) == 0);
        expect(save() == start_);
    }

private:
    QuillonWrapper* wrapper_ = nullptr;
    std::string start_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    static OpenApplet applet;
    const InputFile file(".mcf", bytes, size);
    const int result = applet.load(file);
    expect(result == 0 || result == Unreadable);
    expect(applet.lastError() == result);
    applet.save();
    applet.restore();
    return 0;
}
