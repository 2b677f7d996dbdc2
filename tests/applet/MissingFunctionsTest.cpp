// Whole lives of the applet on SDKs that lack a function: whatever is missing, every call answers, and never faults.
//
// An SDK without a function is a copy of the software board's whose name for it has been overwritten.

#include <dlfcn.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "client/testing/BuiltApplet.h"
#include "quillon/PublicParameters.h"
#include "tests/files/TemporaryFolder.h"
#include "tests/support/CapturedLog.h"
#include "tests/support/Surroundings.h"

namespace quillon::client {
namespace {

using ::testing::AllOf;
using ::testing::AnyOf;
using ::testing::Contains;
using ::testing::EndsWith;
using ::testing::StartsWith;

constexpr int FirstRegister = 1'000'001;
constexpr int DriverVersionId = 27001;  // a text of the SDK's own

/// What every step of a life answered.
using Answers = std::map<std::string, std::int64_t>;

class MissingFunctions : public TemporaryFolder {
protected:
    /// A folder with the stand-ins, and the SDK without the functions `missing`.
    std::filesystem::path sdkWithout(const std::vector<std::string>& missing) {
        const std::filesystem::path standIns = testing::builtStandIns();
        std::filesystem::path result = folder / ("sdk" + std::to_string(++sdks_));
        std::filesystem::create_directory(result);
        for (const char* neighbour : {"libsoftboard.so", "libtavrt.so", "liborlo_hw.so"}) {
            std::filesystem::create_symlink(standIns / neighbour, result / neighbour);
        }
        std::ifstream whole(standIns / "libfglib5.so", std::ios::binary);
        std::string bytes((std::istreambuf_iterator<char>(whole)), {});
        for (const std::string& name : missing) {
            const std::string entry = std::string(1, '\0') + name + '\0';
            const std::size_t place = bytes.find(entry);  // the first is the one of the dynamic symbols
            EXPECT_NE(place, std::string::npos) << name;
            bytes[place + 1] = '-';
        }
        std::ofstream(result / "libfglib5.so", std::ios::binary) << bytes;
        return result;
    }

    /// One life of the applet on such an SDK: everything that a host can ask for, once.
    Answers live(const std::vector<std::string>& missing) {
        // What such an SDK gave out, nothing can free.
        const auto frees = [](const std::string& name) { return name.find("ree") != std::string::npos; };
        std::optional<test::ToldLeak> leak;
        if (std::any_of(missing.begin(), missing.end(), frees)) {
            leak.emplace();
        }
        const std::filesystem::path sdk = sdkWithout(missing);
        const Library library = Library::open(testing::builtLibrary(), sdk);
        expectMissing(sdk, missing);
        const SoftBoard board(testing::builtStandIns());
        const Functions& f = library.functions();
        Answers answers;
        int status = 77;
        QuillonWrapper* location = f.Std_entry(board.device(), &status, 0);
        answers["start"] = status;
        if (location == nullptr) {
            return answers;
        }
        const QuillonHandle handle = &location;
        useParameters(f, handle, answers);
        useStrings(f, handle, answers);
        useDescription(f, handle, answers);
        useFiles(f, handle, answers);
        useAcquisition(f, handle, answers);
        answers["close"] = f.Fg_FreeGrabber(handle);
        EXPECT_EQ(location, nullptr);
        return answers;
    }

    /// The steps in which a life differs from one on the whole SDK, with what they answered.
    Answers changed(const std::vector<std::string>& missing) {
        if (whole_.empty()) {
            whole_ = live({});
        }
        Answers result;
        for (const auto& [step, answer] : live(missing)) {
            if (whole_.at(step) != answer) {
                result[step] = answer;
            }
        }
        return result;
    }

    test::CapturedLog log;

private:
    static void expectMissing(const std::filesystem::path& sdk, const std::vector<std::string>& missing) {
        void* const loaded = ::dlopen((sdk / "libfglib5.so").c_str(), RTLD_NOW | RTLD_NOLOAD);
        ASSERT_NE(loaded, nullptr);
        for (const std::string& name : missing) {
            EXPECT_EQ(::dlsym(loaded, name.c_str()), nullptr) << name;
        }
        ::dlclose(loaded);
    }

    static std::int64_t readInt(const Functions& f, QuillonHandle handle, int id) {
        std::int64_t value = 0;
        return f.Fg_getParameterWithType(handle, id, &value, 0, FgTypeUInt64);
    }

    static std::int64_t writeInt(const Functions& f, QuillonHandle handle, int id, std::int64_t value) {
        return f.Fg_setParameterWithType(handle, id, &value, 0, FgTypeUInt32);
    }

    static void useParameters(const Functions& f, QuillonHandle handle, Answers& answers) {
        answers["write FG_WIDTH"] = writeInt(f, handle, 100, 512);
        answers["read FG_WIDTH"] = readInt(f, handle, 100);
        answers["write FG_PIXELDEPTH"] = writeInt(f, handle, 4000, 8);
        answers["write FG_FORMAT"] = writeInt(f, handle, 700, 6);
        const double gain = 2.0;
        answers["write FG_PROCESSING_GAIN"] =
            f.Fg_setParameterWithType(handle, FG_PROCESSING_GAIN, &gain, 0, FgTypeDouble);
        answers["read FG_FILLLEVEL"] = readInt(f, handle, 110086);
        answers["read FG_SYSTEMMONITOR_FPGA_DNA"] = readInt(f, handle, 200349);
        answers["read FG_CAMSTATUS"] = readInt(f, handle, 2000);
        answers["read FG_NR_OF_DMAS"] = readInt(f, handle, 3050);
        answers["read FG_NR_OF_PROCESSES"] = readInt(f, handle, 3070);
        void* place = nullptr;
        answers["read FG_DMASTATUS"] = f.Fg_getParameterWithType(handle, FG_DMASTATUS, &place, 0, FgTypeUInt32);
        answers["read an SDK parameter"] = readInt(f, handle, FG_SDK_IDS + FG_TIMEOUT);
        answers["write an SDK parameter"] = writeInt(f, handle, FG_SDK_IDS + FG_TIMEOUT, 5);
        answers["read a register"] = readInt(f, handle, FirstRegister);
        answers["write a register"] = writeInt(f, handle, FirstRegister, 1);
        FieldParameterInt_s entry{7, 3};
        answers["write an entry"] = f.Fg_setParameterWithType(handle, FG_LUT_VALUE_RED, &entry, 0, FgTypeFieldInt);
        answers["read an entry"] = f.Fg_getParameterWithType(handle, FG_LUT_VALUE_RED, &entry, 0, FgTypeFieldInt);
        std::uint32_t values[2] = {1, 2};
        FieldParameterAccess entries{FgTypeUInt32, 0, 2, values};
        answers["write entries"] =
            f.Fg_setParameterWithType(handle, FG_LUT_VALUE_GREEN, &entries, 0, FgTypeFieldAccess);
        answers["read entries"] = f.Fg_getParameterWithType(handle, FG_LUT_VALUE_GREEN, &entries, 0, FgTypeFieldAccess);
        answers["choose a monitor"] = writeInt(f, handle, 900001, 1);
        answers["inject"] = writeInt(f, handle, 900002, 1);
        answers["read the monitor"] = readInt(f, handle, 900009);
    }

    static void useStrings(const Functions& f, QuillonHandle handle, Answers& answers) {
        for (const auto& [name, id] : {std::pair("FG_APPLET_ID", 24010), std::pair("FG_TAV_FILE", 24108),
                                       std::pair("an SDK text", FG_SDK_IDS + DriverVersionId)}) {
            char* text = nullptr;
            answers[std::string("read ") + name] = f.Fg_getParameterWithType(handle, id, &text, 0, FgTypeString);
            answers[std::string("release ") + name] =
                f.Fg_freeParameterStringWithType(handle, id, text, 0, FgTypeString);
        }
        answers["release FG_NR_OF_DMAS"] =
            f.Fg_freeParameterStringWithType(handle, FG_NR_OF_DMAS, nullptr, 0, FgTypeString);
        char name[512] = "FG_WIDTH";
        answers["read FG_PARAM_DESCR"] = f.Fg_getParameterWithType(handle, FG_PARAM_DESCR, name, 0, FgTypeCharBuffer);
    }

    static void useDescription(const Functions& f, QuillonHandle handle, Answers& answers) {
        answers["names"] = f.Fg_getNrOfParameter(handle);
        for (int index = 0; index < f.Fg_getNrOfParameter(handle); ++index) {
            EXPECT_NE(f.Fg_getParameterName(handle, index), nullptr) << index;
        }
        answers["id of FG_WIDTH"] = f.Fg_getParameterIdByName(handle, "FG_WIDTH");
        answers["records"] = f.Fg_getParameterInfo(handle, 0) != nullptr ? 1 : 0;
        std::size_t size = 0;
        answers["size of the document"] = f.Fg_getParameterInfoXML(handle, 0, nullptr, &size);
        std::vector<char> document(size);
        answers["document"] = f.Fg_getParameterInfoXML(handle, 0, document.data(), &size);
        answers["event"] = static_cast<std::int64_t>(f.Fg_getEventMask(handle, "FG_OVERFLOW_CAM0"));
        answers["event's name"] = f.Fg_getEventName(handle, 1) != nullptr ? 1 : 0;
        answers["shading"] = f.Shad_GetMaxLine(handle, nullptr);
    }

    void useFiles(const Functions& f, QuillonHandle handle, Answers& answers) {
        answers["save"] = f.Fg_saveConfig(handle, path("a.mcf").c_str());
        answers["load"] = f.Fg_loadConfig(handle, path("a.mcf").c_str());
        const std::string table = path("a.lut");
        answers["save tables"] =
            f.Fg_setParameterWithType(handle, FG_LUT_SAVE_FILE, table.c_str(), 0, FgTypeCharBuffer);
        const std::string configuration = path("b.mcf");
        answers["save the SDK's configuration"] =
            f.Fg_setParameterWithType(handle, FG_DEBUGSAVECONFIG, configuration.c_str(), 0, FgTypeCharBuffer);
    }

    static void useAcquisition(const Functions& f, QuillonHandle handle, Answers& answers) {
        char appletId[256] = "";
        answers["applet id"] = f.Fg_getAppletId(handle, appletId);
        answers["acquire"] = f.Fg_AcquireEx(handle, 0, 10, 0, nullptr);
        answers["status"] = f.Fg_getStatusEx(handle, 2, 5, 0, nullptr);
        answers["last picture"] = f.Fg_getLastPicNumberEx(handle, 0, nullptr) >= 0 ? 0 : -1;
        answers["wait"] = f.Fg_getLastPicNumberBlockingEx(handle, 0, 0, 0, nullptr) >= 0 ? 0 : -1;
        answers["stop"] = f.Fg_stopAcquireEx(handle, 0, nullptr, 0);
        answers["last error"] = f.Fg_getLastErrorNumber(handle);
    }

    Answers whole_;  ///< a life on the whole SDK
    int sdks_ = 0;
};

constexpr std::int64_t NotThere = -12;

TEST_F(MissingFunctions, AWholeSdkAnswersEverything) {
    const test::Variable registers("ORLO_ENABLE_DRA", "1");
    const test::Variable sdkNames("ORLO_ENABLE_DIXA", "1");
    const Answers answers = live({});
    for (const char* step : {"start", "write FG_WIDTH", "read FG_FILLLEVEL", "read an SDK parameter", "read entries",
                             "read an SDK text", "release an SDK text", "choose a monitor", "document", "load",
                             "save the SDK's configuration", "acquire", "close"}) {
        EXPECT_EQ(answers.at(step), 0) << step;
    }
    EXPECT_EQ(answers.at("records"), 1);
}

struct Missing {
    const char* function;
    Answers changed;  ///< against the whole SDK
};

std::vector<Missing> everyFunction() {
    const Answers nothing;
    return {
        {"Fg_getAppletId", {{"applet id", NotThere}}},
        {"Fg_setParameter", nothing},
        {"Fg_setParameterWithType",
         {{"write FG_WIDTH", NotThere},
          {"write FG_FORMAT", -2031},  // the branches are switched without the primitives
          {"write FG_PROCESSING_GAIN", NotThere},
          {"write an SDK parameter", NotThere},
          {"write an entry", NotThere},
          {"write entries", NotThere},
          {"inject", -2031}}},
        {"Fg_getParameter", nothing},
        {"Fg_getParameterWithType",
         {{"write FG_FORMAT", -6000},  // no branch could be read at the start
          {"read FG_FILLLEVEL", NotThere},
          {"read FG_SYSTEMMONITOR_FPGA_DNA", NotThere},
          {"read FG_CAMSTATUS", NotThere},
          {"read FG_NR_OF_DMAS", NotThere},
          {"read FG_DMASTATUS", NotThere},
          {"read an SDK parameter", NotThere},
          {"read FG_APPLET_ID", NotThere},
          {"release FG_APPLET_ID", -2070},
          {"read an SDK text", NotThere},
          {"release an SDK text", -9001},
          {"choose a monitor", -2031},
          {"inject", -2031},
          {"load", -5000}}},  // the save could not read what it has to write
        {"Fg_freeParameterStringWithType", {{"release an SDK text", NotThere}, {"release FG_NR_OF_DMAS", NotThere}}},
        {"Fg_saveConfig", nothing},
        {"Fg_loadConfig", nothing},
        {"Fg_Acquire", nothing},
        {"Fg_stopAcquire", nothing},
        {"Fg_getLastPicNumberBlockingEx", {{"wait", -1}}},
        {"Fg_getLastPicNumberEx", {{"last picture", -1}}},
        {"Fg_FreeGrabber", nothing},
        {"Fg_getLastErrorNumber", nothing},
        {"Fg_getStatusEx", {{"status", NotThere}}},
        {"Fg_AcquireEx", {{"acquire", NotThere}, {"status", 0}, {"stop", -9008}, {"last error", -9008}}},
        {"Fg_stopAcquireEx", {{"stop", NotThere}, {"last error", NotThere}}},
        {"Fg_getParameterInfo", {{"records", 0}}},
        {"Fg_getParameterIdByName",  // no id, and the board answers -9002 to an access without one
         {{"write FG_WIDTH", -9002},
          {"write FG_FORMAT", -6000},
          {"write FG_PROCESSING_GAIN", -9002},
          {"read FG_FILLLEVEL", -9002},
          {"read FG_SYSTEMMONITOR_FPGA_DNA", -9002},
          {"read FG_CAMSTATUS", -9002},
          {"write an entry", -9002},
          {"write entries", -9002},
          {"choose a monitor", -2031},
          {"inject", -2031},
          {"read FG_APPLET_ID", -9002},
          {"release FG_APPLET_ID", -2070},
          {"load", -5000}}},
        {"Fg_AllocShading", nothing},
        {"Fg_FreeShading", nothing},
        {"Shad_SetSubValueLine", nothing},
        {"Shad_SetMultValueLine", nothing},
        {"Shad_SetFixedPatternNoiseLine", nothing},
        {"Shad_GetMaxLine", nothing},
        {"Shad_GetAccess", nothing},
        {"Shad_FreeAccess", nothing},
        {"Shad_WriteActLine", nothing},
        {"Fg_InitHandleSlaveAware", nothing},
        {"Fg_InitHandle", nothing},
    };
}

TEST_F(MissingFunctions, EachMayBeMissing) {
    for (const Missing& missing : everyFunction()) {
        EXPECT_EQ(changed({missing.function}), missing.changed) << missing.function;
    }
}

TEST_F(MissingFunctions, EachMayBeMissingWithTheDirectAccesses) {
    const test::Variable registers("ORLO_ENABLE_DRA", "1");
    const test::Variable sdkNames("ORLO_ENABLE_DIXA", "1");
    for (Missing& missing : everyFunction()) {
        if (std::string(missing.function) == "Fg_getParameterInfo") {
            missing.changed["names"] = PositionCount + 20;  // the registers alone
        }
        EXPECT_EQ(changed({missing.function}), missing.changed) << missing.function;
    }
}

TEST_F(MissingFunctions, EachPairOfAcquisitionFunctionsMayBeMissing) {
    const std::map<std::string, std::string> steps{{"Fg_AcquireEx", "acquire"},
                                                   {"Fg_stopAcquireEx", "stop"},
                                                   {"Fg_getStatusEx", "status"},
                                                   {"Fg_getLastPicNumberEx", "last picture"},
                                                   {"Fg_getLastPicNumberBlockingEx", "wait"}};
    for (auto first = steps.begin(); first != steps.end(); ++first) {
        for (auto second = std::next(first); second != steps.end(); ++second) {
            const Answers answers = changed({first->first, second->first});
            for (const auto& [function, step] : {*first, *second}) {
                EXPECT_THAT(answers.at(step), AnyOf(NotThere, -1)) << first->first << ", " << second->first;
            }
        }
    }
}

TEST_F(MissingFunctions, AnSdkThatTakesNoDesignOpensNothing) {
    EXPECT_EQ(live({"Fg_InitHandle", "Fg_InitHandleSlaveAware"}), (Answers{{"start", -2031}}));
}

TEST_F(MissingFunctions, AnAccessThatTheSdkLacksIsLoggedAsFailed) {
    live({"Fg_setParameterWithType", "Fg_getParameterWithType"});
    const std::vector<std::string> lines = log.lines();
    EXPECT_THAT(lines, Contains(AllOf(StartsWith("5 orlo.wrapper.Quillon Setting IX parameter "
                                                 "'Device1_Process0_Buffer_0_SensorWidth' (ID: "),
                                      EndsWith(") failed: result = -12"))));
    EXPECT_THAT(lines, Contains(AllOf(StartsWith("5 orlo.wrapper.Quillon Getting IX parameter "
                                                 "'Device1_Process0_BoardStatus_FpgaDNA' (ID: "),
                                      EndsWith(") failed: result = -12"))));
}

TEST_F(MissingFunctions, AnSdkWithoutIdsLeavesEveryDesignParameterUnresolved) {
    live({"Fg_getParameterIdByName"});
    EXPECT_THAT(log.lines(), Contains("4 orlo.wrapper.Quillon cannot retrieve IX id for IX parameter: "
                                      "'Device1_Process0_Buffer_0_SensorWidth'"));
}

}  // namespace
}  // namespace quillon::client
