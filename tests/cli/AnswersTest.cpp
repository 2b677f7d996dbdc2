// The answers in JSON of every verb against the schemas in docs/json.

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include "tests/cli/Command.h"

namespace quillon::cli::testing {
namespace {

using ::testing::HasSubstr;

std::vector<std::string> wordsOf(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> words;
    for (std::string word; stream >> word;) {
        words.push_back(word);
    }
    return words;
}

/// Answers that are to be held against the schemas, all at once.
class Answers {
public:
    void add(const std::string& verb, const std::string& words, const nlohmann::json& answer) {
        lines_ << nlohmann::json({{"verb", verb}, {"words", words}, {"answer", answer}}).dump() << '\n';
    }

    Outcome validate() const {
        const Folder folder;
        std::ofstream(folder / "answers") << lines_.str();
        return shell("/usr/bin/python3 " QUILLON_VALIDATE_ANSWERS " " QUILLON_SCHEMAS " < answers", folder.path());
    }

private:
    std::ostringstream lines_;
};

/// Two states and two tables, of which one each is broken.
void makeFiles(const Folder& folder) {
    ASSERT_EQ(quillon({"set", "FG_WIDTH=2048", "FG_LUT_ENABLE=FG_ON", "--save", folder / "good.mcf"}).status, 0);
    ASSERT_EQ(quillon({"set", "FG_LINETRIGGERMODE=ASYNC_TRIGGER", "--save", folder / "encoder.mcf"}).status, 0);
    ASSERT_EQ(quillon({"lut", "--save", folder / "good.lut"}).status, 0);
    std::ofstream(folder / "bad.lut") << "no table\n";
    std::ifstream good(folder / "good.mcf");
    std::ofstream bad(folder / "bad.mcf", std::ios::binary);
    for (std::string line; std::getline(good, line);) {
        if (line.starts_with("FG_WIDTH=")) {
            line = "FG_WIDTH=6;";
        } else if (line.starts_with("FG_LINE_DOWNSCALE=")) {
            line = "FG_LINE_DOWNSCALE=0;\nFG_QU\xC4LLON=1;";
        } else if (line.starts_with("FG_FORMAT=")) {
            line = "FG_FORMAT=12345;";
        } else if (line.starts_with("FG_CAMERASIMULATOR_WIDTH=")) {
            line = "FG_CAMERASIMULATOR_WIDTH=1000;";
        } else if (line.starts_with("FG_CAMERASIMULATOR_FRAMERATE=")) {
            line = "FG_CAMERASIMULATOR_FRAMERATE=nan;";
        } else if (line.starts_with("FG_TIMEOUT=")) {
            line = "FG_TIMEOUT=soon;";
        } else if (line.starts_with("FG_LUT_CUSTOM_FILE=")) {
            line = "FG_LUT_CUSTOM_FILE=\"bad.lut\";";
        }
        bad << line << '\n';
    }
    std::ofstream(folder / "torn.mcf") << contentOf(folder / "good.mcf").substr(0, 900);
}

struct Command {
    int status;
    std::string words;
};

const std::vector<Command> commands{
    {0, "get FG_WIDTH FG_VANTAGEPOINT FG_LINEEXPOSURE FG_LUT_CUSTOM_FILE 100"},
    {0, "get FG_LUT_VALUE_RED FG_LUT_VALUE_RED[3..5] FG_LUT_VALUE_BLUE[16383] --trace"},
    {0, "get FG_FILLLEVEL FG_DMASTATUS FG_SYSTEMMONITOR_FPGA_DNA --trace"},
    {1, "get FG_WIDTH 999 -5 FG_LUT_VALUE_RED[20000] --trace"},
    {2, "get FG_WIDHT"},
    {2, "get"},
    {2, "get FG_WIDTH --colour"},
    {1, "get FG_WIDTH --mcf missing.mcf"},
    {1, "get FG_WIDTH --mcf bad.mcf --strict"},
    {0, "get FG_WIDTH --mcf bad.mcf"},
    {1, "get FG_WIDTH --save /no/such/folder/a.mcf"},
    {3, "get FG_WIDTH --library missing.so"},
    {3, "get FG_WIDTH --design good.mcf"},
    {0, "set FG_WIDTH=2048 FG_DIGIO_OUTPUT=2 FG_CAMERASIMULATOR_WIDTH=1000 FG_LINEEXPOSURE=20.5 --trace"},
    {0, "set FG_VANTAGEPOINT=FG_VANTAGEPOINT_TOP_RIGHT FG_WIDTH=512"},
    {0, "set FG_LUT_TYPE=LUT_TYPE_CUSTOM FG_LUT_VALUE_RED=1,2 FG_LUT_VALUE_RED[10..12]=7,8,70000 --trace"},
    {0, "set FG_PROCESSING_GAIN=2 FG_LUT_CUSTOM_FILE=good.lut FG_LUT_TYPE=LUT_TYPE_CUSTOM --trace"},
    {1, "set FG_WIDTH=6"},
    {1, "set FG_XOFFSET=8 FG_WIDTH=16384 FG_HEIGHT=1"},
    {1, "set FG_IMG_SELECT=3"},
    {1, "set FG_FORMAT=12345"},
    {1, "set FG_LINEEXPOSURE=30000"},
    {1, "set FG_FILLLEVEL=3"},
    {1, "set FG_HEIGHT=2048 --trace --fault Device1_Process0_Buffer_0_XLength=-5"},
    {2, "set FG_WIDTH=wide"},
    {2, "set FG_LUT_VALUE_RED[0..2]=1"},
    {0, "registers"},
    {0, "registers Scratch=1 5 1000005 LedControl=0x101 SpiCommand=1"},
    {1, "registers SpiCommand"},
    {1, "registers Scratch=1 DesignId=1 Scratch=2"},
    {2, "registers 99"},
    {0, "list"},
    {0, "list --group ROI"},
    {0, "list --mcf good.mcf"},
    {2, "list --group Nothing"},
    {0, "describe FG_WIDTH FG_VANTAGEPOINT FG_LINEEXPOSURE FG_LUT_CUSTOM_FILE FG_LUT_VALUE_RED FG_DEBUGSOURCE"},
    {0, "describe FG_SYSTEMMONITOR_FPGA_TEMPERATURE FG_TRIGGEROUT_GPO_0_SOURCE FG_SHAFTENCODERON 999"},
    {2, "describe FG_WIDHT"},
    {0, "xml"},
    {0, "xml -o quillon.xml"},
    {1, "xml -o /no/such/folder/quillon.xml"},
    {0, "events"},
    {0, "save a.mcf"},
    {1, "save a.txt"},
    {0, "load good.mcf"},
    {0, "load good.mcf --trace"},
    {0, "load bad.mcf"},
    {1, "load torn.mcf"},
    {1, "load missing.mcf"},
    {0, "check good.mcf"},
    {1, "check bad.mcf"},
    {1, "check torn.mcf"},
    {1, "check missing.mcf"},
    {0, "diff good.mcf"},
    {0, "diff good.mcf bad.mcf"},
    {0, "diff good.mcf good.mcf"},
    {0, "diff good.mcf torn.mcf"},
    {1, "diff good.mcf missing.mcf"},
    {0, "status"},
    {0, "lut"},
    {0, "lut --range 0..255"},
    {0, "lut --load good.lut --save b.lut -o b.png"},
    {0, "lut --compare good.lut good.lut"},
    {1, "lut --load bad.lut"},
    {2, "lut --range all"},
    {0, "trigger"},
    {0, "trigger --mcf good.mcf"},
    {0, "io"},
    {0, "io --inputs 0x005"},
    {2, "io --inputs 0x1000"},
    {0, "grab --set FG_WIDTH=32 --set FG_HEIGHT=16"},
    {0, "grab -n 2 -o out_%d.png --histogram --set FG_WIDTH=32 --set FG_HEIGHT=16"},
    {1, "grab --timeout 1 --set FG_IMGTRIGGERMODE=ASYNC_TRIGGER"},
    {1, "grab --set FG_WIDTH=6"},
    {0, "serve gige --for 500ms"},
    {1, "serve gige --interface nowhere0"},
    {2, "serve gige --rate 1"},
    {2, "serve gige --for never"},
    {2, "serve gige --serial AN_ENDLESS_SERIAL_NUMBER"},
    {1, "serve gige --set FG_WIDTH=6"},
    {0, "info"},
    {0, "info FG_COL24 RGB12"},
    {2, "info FG_COLD24"},
    {0, "find exposure"},
    {0, "find camera trigger"},
    {1, "find nowhere"},
    {0, "apply good.mcf"},
    {0, "apply good.mcf --verify"},
    {1, "apply bad.mcf"},
    {0, "plan --width 4096 --line-rate 20kHz --exposure 40us --height 2048 -o plan.mcf"},
    {0, "plan --width 4096 --encoder 10um --speed 200mm/s --exposure 10us"},
    {1, "plan --width 4096 --line-rate 20kHz --exposure 400us --frames-per-second 5"},
    {0, "timeline 300us"},
    {0, "timeline 1ms --signals LVAL events -o timeline.png"},
    {2, "timeline 1"},
    {0, "trigger --mcf encoder.mcf"},
    {0, "advance 1ms"},
    {2, "advance 1"},
    {0, "input 0=1 front2=high"},
    {0, "input"},
    {2, "input 12=1"},
    {0, "wait FG_END_OF_FRAME_CAM_PORT_0"},
    {1, "wait FG_TRIGGER_INPUT0_RISING --within 1ms"},
    {0, "scene grey:77"},
    {0, "scene --light reference=20us,noise=1%"},
    {1, "scene missing.png"},
    {2, "scene bras"},
    {0, "belt 500mm/s --encoder 10/mm --barrier 20mm:100mm@3"},
    {0, "belt"},
    {2, "belt 500"},
    {0, "fault line:100:drop frame:every:lose camera:10ms- --dma-rate 1GB/s"},
    {0, "fault --clear --dma-rate unlimited"},
    {2, "fault line:100"},
    {0, "grab -n 2 --fault frame:1:lose --scene noise --set FG_WIDTH=32 --set FG_HEIGHT=16"},
    {2, "undo"},
    {0, "watch FG_WIDTH FG_FILLLEVEL FG_VANTAGEPOINT FG_LUT_VALUE_RED[3] --times 1"},
    {1, "watch 999 --times 1"},
};

TEST(Answers, AreWhatTheSchemasOfTheVerbsSay) {
    const Folder folder;
    makeFiles(folder);
    Answers answers;
    for (const Command& command : commands) {
        std::vector<std::string> words = wordsOf(command.words);
        words.insert(words.begin() + 1, "--json");
        // Without a design the applet leaves its object behind, and a leak check would end with a status of its own.
        const bool leaves = command.words.find("--design") != std::string::npos;
        if (leaves) {
            setenv("ASAN_OPTIONS", "detect_leaks=0", 1);
        }
        const Outcome outcome = quillon(words, folder.path());
        if (leaves) {
            unsetenv("ASAN_OPTIONS");
        }
        EXPECT_EQ(outcome.status, command.status) << command.words << '\n' << outcome.err;
        ASSERT_TRUE(nlohmann::json::accept(outcome.out)) << command.words << '\n' << outcome.out;
        answers.add(words.front(), command.words, outcome.json());
    }
    const Outcome outcome = answers.validate();
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.out, "");
}

TEST(Answers, OfAllParametersAreWhatTheSchemasSay) {
    const auto listed = quillon({"list", "--json"}).json();
    std::vector<std::string> names;
    std::vector<nlohmann::json> pending(listed.begin(), listed.end());
    while (!pending.empty()) {
        const nlohmann::json one = pending.back();
        pending.pop_back();
        if (one.contains("group")) {
            pending.insert(pending.end(), one["children"].begin(), one["children"].end());
        } else {
            names.push_back(one["name"]);
        }
    }
    ASSERT_EQ(names.size(), 156U);
    Answers answers;
    for (const char* verb : {"get", "describe"}) {
        std::vector<std::string> words{verb, "--json"};
        words.insert(words.end(), names.begin(), names.end());
        const auto answer = quillon(words).json();
        EXPECT_EQ(answer.size(), names.size());
        answers.add(verb, std::string(verb) + " of all", answer);
    }
    for (const char* verb : {"list", "get DIXA_FG_TIMEOUT DRA_SpiCommand", "describe DRA_Scratch DRA_SpiCommand",
                             "set DRA_SpiCommand=1 DRA_Scratch=7 DIXA_FG_TIMEOUT=7 --trace"}) {
        const Outcome outcome = shell(std::string("ORLO_ENABLE_DRA=1 ORLO_ENABLE_DIXA=1 \"$quillon\" --json ") + verb);
        answers.add(wordsOf(verb).front(), std::string("with both switches: ") + verb, outcome.json());
    }
    EXPECT_EQ(answers.validate().out, "");
}

TEST(Answers, ThatRepeatAreALineEach) {
    std::istringstream lines(quillon({"status", "--watch", "--times", "3", "--interval", "0.01", "--json"}).out);
    Answers answers;
    int count = 0;
    for (std::string line; std::getline(lines, line); ++count) {
        answers.add("status", "a look", nlohmann::json::parse(line));
    }
    EXPECT_EQ(count, 3);
    EXPECT_EQ(answers.validate().out, "");
}

TEST(Answers, OfASessionAreALineForEachOfItsLines) {
    const Folder folder;
    makeFiles(folder);
    const std::vector<std::string> script{"set FG_WIDTH=2048",
                                          "undo",
                                          "load good.mcf --trace",
                                          "undo",
                                          "advance 1ms",
                                          "watch FG_WIDTH --times 1",
                                          "status",
                                          "set FG_WIDTH=6",
                                          "get FG_WIDHT",
                                          "undo",
                                          "lut",
                                          "grab --set FG_WIDTH=32",
                                          "trigger",
                                          "timeline 1ms"};
    std::ofstream lines(folder / "lines");
    for (const std::string& line : script) {
        lines << line << '\n';
    }
    lines.close();
    const Outcome outcome = quillon({"run", "--keep-going", "lines", "--json"}, folder.path());
    std::istringstream told(outcome.out);
    Answers answers;
    std::size_t count = 0;
    for (std::string line; std::getline(told, line) && count < script.size(); ++count) {
        answers.add(wordsOf(script[count]).front(), script[count], nlohmann::json::parse(line));
    }
    EXPECT_EQ(count, script.size()) << outcome.err;
    EXPECT_EQ(told.peek(), std::istringstream::traits_type::eof());
    EXPECT_EQ(answers.validate().out, "");
}

TEST(Answers, OfAGrabAreALineForEachFrameWhereThatIsAskedFor) {
    const Folder folder;
    const Outcome outcome = quillon(
        {"grab", "-n", "3", "--each", "--json", "-o", "out_%d.pgm", "--set", "FG_WIDTH=32", "--set", "FG_HEIGHT=16"},
        folder.path());
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    std::istringstream lines(outcome.out);
    std::vector<nlohmann::json> told;
    Answers answers;
    for (std::string line; std::getline(lines, line);) {
        told.push_back(nlohmann::json::parse(line));
        answers.add("grab", line, told.back());
    }
    ASSERT_EQ(told.size(), 4U);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(told[i]["frame"], i + 1);
        EXPECT_EQ(told[i]["image"], i + 1);
        EXPECT_EQ(told[i]["width"], 32);
        EXPECT_EQ(told[i]["lines"], 16);
        EXPECT_EQ(told[i]["files"].size(), 3U);
    }
    EXPECT_EQ(told[1]["files"][0], "out_2_r.pgm");
    EXPECT_EQ(told[3]["frames"], 3);
    EXPECT_EQ(told[3]["files"].size(), 9U);
    EXPECT_EQ(answers.validate().out, "");
}

/// Each of these has one thing in it that is not as the schemas say.
TEST(Answers, ThatAreBrokenAreFound) {
    const auto get = quillon({"get", "FG_WIDTH", "FG_LUT_VALUE_RED", "--trace", "--json"}).json();
    const auto set = quillon({"set", "FG_WIDTH=2048", "--trace", "--json"}).json();
    const auto refused = quillon({"set", "FG_WIDTH=6", "--json"}).json();
    const auto list = quillon({"list", "--group", "ROI", "--json"}).json();
    const auto lut = quillon({"lut", "--json"}).json();
    const auto error = quillon({"get", "FG_WIDHT", "--json"}).json();
    const auto with = [](nlohmann::json json, const char* place, const nlohmann::json& value) {
        json[nlohmann::json::json_pointer(place)] = value;
        return json;
    };
    const auto without = [](nlohmann::json json, const char* place, const char* name) {
        json[nlohmann::json::json_pointer(place)].erase(name);
        return json;
    };
    const std::vector<std::pair<std::string, nlohmann::json>> broken{
        {"get", without(get, "/0", "value")},
        {"get", with(get, "/0/value", true)},
        {"get", with(get, "/0/more", 1)},
        {"get", with(get, "/1/table/more", 1)},
        {"get", with(get, "/0/unit", nullptr)},
        {"get", get[0]},
        {"set", with(set, "/0/accesses/0/sequence", 0)},
        {"set", with(set, "/0/accesses/0/type", 2)},
        {"set", with(set, "/0/accesses/0/more", 2)},
        {"set", with(set, "/0/limits/0/before", "0 to 15360 pixel")},
        {"set", with(set, "/0/limits/0/before/more", 1)},
        {"set", with(refused, "/0/asked", 6)},
        {"set", without(refused, "/0/refused", "text")},
        {"set", with(refused, "/0/refused/meaning", "out of range")},
        {"list", with(list, "/0/children/0/access", "rw")},
        {"list", with(list, "/0/children/0/more", 1)},
        {"list", with(list, "/0/children/0/min", "4")},
        {"list", without(list, "/0", "group")},
        {"lut", with(lut, "/red", nlohmann::json({1, 2}))},
        {"lut", without(lut, "", "blue")},
        {"get", with(error, "/status", 0)},
        {"get", without(error, "", "error")},
        {"get", with(error, "/more", 1)},
        {"nothing", get},
    };
    Answers answers;
    for (std::size_t i = 0; i < broken.size(); ++i) {
        answers.add(broken[i].first, "broken " + std::to_string(i) + '.', broken[i].second);
    }
    const Outcome outcome = answers.validate();
    EXPECT_EQ(outcome.status, 1);
    for (std::size_t i = 0; i < broken.size(); ++i) {
        EXPECT_THAT(outcome.out, HasSubstr("broken " + std::to_string(i) + ".: ")) << broken[i].second.dump();
    }
}

TEST(Answers, OfEachVerbHaveASchema) {
    // A session answers with what its lines answer.
    const std::set<std::string> withoutAnswers{"completion", "demo", "help", "manual", "reference", "run", "shell"};
    std::istringstream page(quillon({"manual"}).out);
    std::set<std::string> verbs;
    for (std::string line; std::getline(page, line);) {
        if (line.starts_with(".SS ")) {
            verbs.insert(line.substr(4));
        }
    }
    ASSERT_GT(verbs.size(), 20U);
    std::set<std::string> schemas;
    for (const auto& entry : std::filesystem::directory_iterator(QUILLON_SCHEMAS)) {
        const std::string name = entry.path().filename();
        if (name.ends_with(".schema.json") && name != "common.schema.json") {
            schemas.insert(name.substr(0, name.find('.')));
        }
    }
    schemas.insert(withoutAnswers.begin(), withoutAnswers.end());
    EXPECT_EQ(verbs, schemas);
    std::set<std::string> tried;
    for (const Command& command : commands) {
        tried.insert(wordsOf(command.words).front());
    }
    tried.insert(withoutAnswers.begin(), withoutAnswers.end());
    EXPECT_EQ(verbs, tried);
    EXPECT_FALSE(nlohmann::json::accept(quillon({"manual", "--json"}).out));
}

TEST(Answers, TellTheBoundsAsNumbers) {
    const auto json = quillon({"describe", "FG_WIDTH", "FG_LINEEXPOSURE", "FG_VANTAGEPOINT", "FG_LUT_VALUE_RED",
                               "FG_LUT_CUSTOM_FILE", "--json"})
                          .json();
    EXPECT_EQ(json[0]["min"], 4);
    EXPECT_EQ(json[0]["max"], 16384);
    EXPECT_EQ(json[0]["step"], 4);
    EXPECT_EQ(json[0]["type"], "integer");
    EXPECT_EQ(json[0]["access"], "read-write");
    EXPECT_EQ(json[0]["closed"], false);
    EXPECT_EQ(json[1]["min"], 0.512);
    EXPECT_EQ(json[1]["max"], 200);
    EXPECT_EQ(json[1]["type"], "real");
    EXPECT_EQ(json[2]["type"], "enumeration");
    EXPECT_FALSE(json[2].contains("min"));
    EXPECT_EQ(json[2]["values"][1]["accepted"], true);
    EXPECT_EQ(json[3]["type"], "table");
    EXPECT_EQ(json[3]["max"], 65535);
    EXPECT_EQ(json[4]["type"], "text");
    // Bounds are those of the moment.
    const Folder folder;
    ASSERT_EQ(quillon({"set", "FG_XOFFSET=4096", "--save", folder / "a.mcf"}).status, 0);
    EXPECT_EQ(quillon({"describe", "FG_WIDTH", "--json", "--mcf", folder / "a.mcf"}).json()[0]["max"], 12288);
    const auto list = quillon({"list", "--group", "ROI", "--json", "--mcf", folder / "a.mcf"}).json();
    EXPECT_EQ(list[0]["children"][0]["max"], 12288);
}

TEST(Answers, HoldNoWholeTableUnasked) {
    const Folder folder;
    ASSERT_EQ(quillon({"set", "FG_LUT_TYPE=LUT_TYPE_PROCESSING", "--save", folder / "a.mcf"}).status, 0);
    for (const char* words : {"list", "get FG_LUT_VALUE_RED FG_LUT_VALUE_GREEN", "lut", "describe FG_LUT_VALUE_RED",
                              "load a.mcf --trace", "set FG_PROCESSING_GAIN=2 --trace", "diff a.mcf"}) {
        std::vector<std::string> all = wordsOf(words);
        all.emplace_back("--json");
        const Outcome outcome = quillon(all, folder.path());
        EXPECT_EQ(outcome.status, 0) << words;
        EXPECT_LT(outcome.out.size(), 100000U) << words;
    }
    EXPECT_EQ(quillon({"get", "FG_LUT_VALUE_RED[0..16383]", "--json"}).json()[0]["value"].size(), 16384U);
}

TEST(Answers, AreOneDocumentWhateverFollows) {
    const Outcome outcome = quillon({"get", "FG_WIDTH", "--json", "--save", "/no/such/folder/a.mcf"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.json()[0]["name"], "FG_WIDTH");
    EXPECT_THAT(outcome.err, HasSubstr("was not written: -5001 (FileNotWritten)"));
}

TEST(Answers, OfACommandThatTheAppletRefusedHaveItsCode) {
    const auto load = quillon({"load", "/no/such/folder/a.mcf", "--json"}).json();
    EXPECT_EQ(load["refused"]["code"], -2076);
    EXPECT_EQ(load["refused"]["name"], "FileNotFound");
    const auto grab = quillon({"grab", "--set", "FG_WIDTH=6", "--json"}).json();
    EXPECT_EQ(grab["refused"]["nearest"], nlohmann::json({{"value", 8}, {"unit", "pixel"}}));
    EXPECT_FALSE(quillon({"get", "FG_WIDHT", "--json"}).json().contains("refused"));
}

}  // namespace
}  // namespace quillon::cli::testing
