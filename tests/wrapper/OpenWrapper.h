/// @file
/// The base wrapper with nothing on top, and a board and a design to link it with.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "softboard/softboard.h"
#include "tests/files/TemporaryFolder.h"
#include "tests/support/PackedDesign.h"
#include "tests/support/RecordingDispatcher.h"
#include "wrapper/DesignLoader.h"
#include "wrapper/FgIxWrapper.h"

namespace quillon {

/// Answers nothing itself: what it does is the base's.
class BareWrapper : public FgIxWrapper {
public:
    BareWrapper() : FgIxWrapper(1) {}

    bool loadState(Fg_ConfigFileParser*) override { return false; }
    void saveState(Fg_ConfigFileParser*) override {}
    int processChannelToDma() override { return 0; }
    int mapDmaToFormat() override { return 0; }
    int setDmaAlignment() override { return 0; }
    int getDmaAlignment() override { return 0; }
    void buildParameterCatalogue() override {}
    int setParameter(int, const void*, unsigned, FgParamTypes) override { return 0; }
    int getParameter(int, void*, unsigned, FgParamTypes) override { return 0; }
    int freeParameterString(int, void*, unsigned, FgParamTypes) override { return 0; }
    int Fg_getParameterIdByName(const char*) override { return 0; }
    const char* Fg_getParameterName(int) override { return nullptr; }
    int Fg_getParameterId(int) override { return 0; }
    int Fg_getNrOfParameter() override { return 0; }
    const char* vendorName() const override { return "Veltrix"; }
    const char* appletName() const override { return "Bare"; }
    const char* versionText() const override { return "1.0"; }
    int appletIdForSaving() const override { return 0; }
};

/// A wrapper that is not linked yet, and what it takes to link it. Messages of level 4 and above are recorded.
class OpenWrapper : public TemporaryFolder {
protected:
    void SetUp() override {
        dispatcher.startLevel = 4;
        board = softboard_open();
    }
    void TearDown() override {
        end();
        softboard_set_sdk_error(nullptr, 0);
        softboard_close(board);
    }

    /// Ends the wrapper, and before it the SDK's handle, which is not the wrapper's to free.
    void end() {
        if (wrapper && wrapper->fglibFg() != nullptr && wrapper->wrapperFg().Fg_FreeGrabber != nullptr) {
            wrapper->wrapperFg().Fg_FreeGrabber(wrapper->fglibFg());
        }
        wrapper.reset();
    }

    /// The maintained design as `change` leaves its description, or as it is.
    fpga_design* loadDesign() { return loadDesign(test::designDescription()); }
    fpga_design* loadDesign(const nlohmann::ordered_json& description) {
        test::packDesignFile(description, folder / "design.tav");
        return TavLoadTavFileWithType((folder / "design.tav").c_str(), 1874, 1);
    }
    /// Links the wrapper with the SDK, the board and the design.
    void link(const char* sdk = SDK, int flags = 0) { link(sdk, flags, loadDesign()); }
    void link(const char* sdk, int flags, fpga_design* design) {
        ASSERT_EQ(wrapper->initializeDllFunctions(sdk), 0);
        ASSERT_EQ(wrapper->runFgInit("Bare.tav", board, design, flags), 0);
        wrapper->initHandles(board, design);
    }

    /// The board's transcript as "NAME(VALUE)" for calls.
    std::vector<std::string> calls() const {
        std::vector<std::string> lines;
        softboard_access access{};
        for (std::size_t i = 0; softboard_transcript_get(board, i, &access) == 0; ++i) {
            if (access.direction == SOFTBOARD_CALL) {
                lines.push_back(std::string(access.name) + "(" + access.value + ")");
            }
        }
        return lines;
    }
    /// A message as the dispatcher gets it from this thread.
    static std::string message(int level, const std::string& text) {
        return std::to_string(level) + " thread-id=" + std::to_string(pthread_self()) + "|" + text;
    }

    test::RecordingDispatcher dispatcher;
    IXdevice* board = nullptr;
    std::unique_ptr<BareWrapper> wrapper = std::make_unique<BareWrapper>();
};

}  // namespace quillon
