#include "cli/Json.h"
#include "cli/pictures/Formats.h"

namespace quillon::cli {

void writeDescription(const client::Frame& frame, PartFile& file) {
    const client::FrameDescription& about = frame.description();
    const bool redFirst = about.has(client::FrameFlag::RedFirst);
    const Json json = object({{"width", about.width},
                              {"lines", about.lines},
                              {"bits", about.bits},
                              {"components", redFirst ? Json{"red", "green", "blue"} : Json{"blue", "green", "red"}},
                              {"packing", "one stream of bits, from the lowest bit of the first byte on"},
                              {"bytes", frame.bytes().size()},
                              {"number", about.number},
                              {"image", about.image},
                              {"lost before", about.lostBefore},
                              {"first tick", about.firstTick},
                              {"last tick", about.lastTick},
                              {"nanoseconds a tick", 8},
                              {"flags", about.flagNames()}});
    const std::string text = json.dump(2) + "\n";
    file.write(std::as_bytes(std::span(text)));
}

}  // namespace quillon::cli
