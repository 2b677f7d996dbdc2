#include "quillon/client/Scene.h"

#include <utility>

#include "client/SoftBoardFunctions.h"
#include "quillon/client/SoftBoard.h"

namespace quillon::client {

static_assert(static_cast<int>(LineFault::Drop) == SOFTBOARD_FAULT_DROP &&
              static_cast<int>(LineFault::Repeat) == SOFTBOARD_FAULT_REPEAT &&
              static_cast<int>(LineFault::Invert) == SOFTBOARD_FAULT_INVERT_BITS);
static_assert(static_cast<int>(FrameFault::Lose) == SOFTBOARD_FAULT_LOSE &&
              static_cast<int>(FrameFault::Truncate) == SOFTBOARD_FAULT_TRUNCATE &&
              static_cast<int>(FrameFault::Stall) == SOFTBOARD_FAULT_STALL_DMA);
static_assert(static_cast<int>(Outage::Camera) == SOFTBOARD_OUTAGE_CAMERA &&
              static_cast<int>(Outage::Link) == SOFTBOARD_OUTAGE_LINK);

namespace {

constexpr std::size_t Components = 3;

/// What the board calls for a line; exceptions end here.
int drawLine(void* user, const softboard_line* about, std::uint16_t* rgb, std::uint32_t pixels) {
    constexpr int black = 1;
    try {
        const auto& draw = *static_cast<const DrawLine*>(user);
        const SceneLine line{about->tick, about->position_mm, about->exposure_us, about->flash != 0};
        return draw(line, std::span(rgb, Components * pixels)) ? 0 : black;
    } catch (...) {
        return black;
    }
}

}  // namespace

void SoftBoard::expectTaken(const std::string& function, int code) const {
    if (code != SOFTBOARD_OK) {
        throw CallError("softboard_" + function, code, lastMessage());
    }
}

void SoftBoard::scenePattern(const std::string& pattern) {
    expectTaken("scene_pattern", board().scene_pattern(device(), pattern.c_str()));
}

void SoftBoard::scenePicture(const std::filesystem::path& file, bool tiled, double pixelsPerMm) {
    expectTaken("scene_picture", board().scene_picture(device(), file.c_str(), tiled ? 1 : 0, pixelsPerMm));
}

void SoftBoard::sceneCallback(DrawLine draw) {
    auto scene = std::make_unique<DrawLine>(std::move(draw));
    expectTaken("scene_callback", board().scene_callback(device(), *scene ? drawLine : nullptr, scene.get()));
    scenes_.push_back(std::move(scene));
}

void SoftBoard::light(const Light& light) {
    expectTaken("scene_light", board().scene_light(device(), light.referenceUs, light.flashGain, light.noise));
}

void SoftBoard::sceneSeed(std::uint64_t seed) {
    expectTaken("scene_seed", board().scene_seed(device(), seed));
}

void SoftBoard::belt(std::span<const BeltMove> moves, const Encoder& encoder) {
    std::vector<softboard_move> profile;
    profile.reserve(moves.size());
    for (const BeltMove& move : moves) {
        profile.push_back({move.untilUs, move.mmPerSecond});
    }
    expectTaken("belt",
                board().belt(device(), encoder.a.value_or(SOFTBOARD_NO_INPUT), encoder.b.value_or(SOFTBOARD_NO_INPUT),
                             encoder.countsPerMm, profile.empty() ? nullptr : profile.data(), profile.size()));
}

void SoftBoard::barrier(unsigned input, double firstMm, double pitchMm, double lengthMm) {
    expectTaken("barrier", board().barrier(device(), input, firstMm, pitchMm, lengthMm));
}

double SoftBoard::beltPosition() const {
    double position = 0;
    expectTaken("belt_position", board().belt_position(device(), &position));
    return position;
}

void SoftBoard::planLineFault(std::uint64_t nth, LineFault fault) {
    expectTaken("plan_line_fault", board().plan_line_fault(device(), nth, static_cast<int>(fault)));
}

void SoftBoard::planFrameFault(std::uint64_t nth, FrameFault fault, double amount) {
    expectTaken("plan_frame_fault", board().plan_frame_fault(device(), nth, static_cast<int>(fault), amount));
}

void SoftBoard::planOutage(Outage outage, double afterUs, double forUs) {
    expectTaken("plan_outage", board().plan_outage(device(), static_cast<int>(outage), afterUs, forUs));
}

void SoftBoard::connectCamera(bool connected) {
    expectTaken("camera", board().camera(device(), connected ? 1 : 0));
}

void SoftBoard::setLink(bool up) {
    expectTaken("link", board().link(device(), up ? 1 : 0));
}

void SoftBoard::setDmaRate(double bytesPerSecond) {
    expectTaken("dma_rate", board().dma_rate(device(), bytesPerSecond));
}

std::string SoftBoard::lastMessage() const {
    std::string text(256, '\0');
    int code = board().last_message(device(), text.data(), text.size());
    while (code == SOFTBOARD_E_RANGE) {
        text.resize(2 * text.size());
        code = board().last_message(device(), text.data(), text.size());
    }
    expectOk("last_message", code);
    text.resize(text.find('\0'));
    return text;
}

}  // namespace quillon::client
