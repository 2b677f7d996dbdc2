#include "cli/WorldWords.h"

#include <gmock/gmock.h>

namespace quillon::cli {
namespace {

using client::Forever;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

SceneWords scene(const std::string& scene, bool tile = false, const std::string& scale = "") {
    SceneWords words;
    words.scene = scene;
    words.tile = tile;
    words.scale = scale;
    return words;
}

Illumination illuminated(const std::string& light) {
    SceneWords words;
    words.light = light;
    return parseScene(words).illumination.value();
}

std::vector<client::BeltMove> movesOf(const std::string& profile) {
    BeltWords words;
    words.profile = profile;
    return parseBelt(words).moves;
}

BeltEncoder encoderOf(const std::string& encoder) {
    BeltWords words;
    words.profile = "1mm/s";
    words.encoder = encoder;
    return parseBelt(words).encoder.value();
}

BeltBarrier barrierOf(const std::string& barrier) {
    BeltWords words;
    words.profile = "1mm/s";
    words.barriers = {barrier};
    return parseBelt(words).barriers.at(0);
}

Fault faultOf(const std::string& fault) {
    FaultWords words;
    words.faults = {fault};
    return parseFaults(words).planned.at(0);
}

std::optional<double> dmaRateOf(const std::string& rate) {
    FaultWords words;
    words.dmaRate = rate;
    return parseFaults(words).bytesPerSecond;
}

/// The words with which something is refused.
template <typename Parse>
std::string refusal(const Parse& parse) {
    try {
        parse();
    } catch (const UsageError& error) {
        return error.what();
    }
    return "it was taken";
}

auto moves(double until, double speed) {
    return AllOf(Field(&client::BeltMove::untilUs, until), Field(&client::BeltMove::mmPerSecond, speed));
}

TEST(SceneWord, APatternIsHandedOn) {
    for (const char* pattern : {"bars", "ramp", "checker", "noise", "noise:7", "grey", "grey:0", "grey:255"}) {
        EXPECT_EQ(std::get<ScenePattern>(parseScene(scene(pattern)).content).text, pattern);
    }
}

TEST(SceneWord, APictureIsKnownByItsName) {
    for (const char* file : {"part.png", "a/part.PPM", "part.pgm", "bars.pnm"}) {
        EXPECT_EQ(std::get<ScenePicture>(parseScene(scene(file)).content).file, file);
    }
    const auto plain = std::get<ScenePicture>(parseScene(scene("part.png")).content);
    EXPECT_FALSE(plain.tiled);
    EXPECT_EQ(plain.pixelsPerMm, 10);
    const auto tiled = std::get<ScenePicture>(parseScene(scene("part.png", true, "2.5/mm")).content);
    EXPECT_TRUE(tiled.tiled);
    EXPECT_EQ(tiled.pixelsPerMm, 2.5);
    EXPECT_EQ(std::get<ScenePicture>(parseScene(scene("part.png", false, "4000/m")).content).pixelsPerMm, 4);
}

TEST(SceneWord, WithoutOneTheSceneStays) {
    EXPECT_TRUE(parseScene({}).isEmpty());
    SceneWords words;
    words.light = "flash=2";
    EXPECT_EQ(parseScene(words).content.index(), 0U);
    EXPECT_FALSE(parseScene(words).isEmpty());
}

TEST(SceneWord, OthersAreToldWithWhatThereIs) {
    EXPECT_EQ(refusal([] { parseScene(scene("bras")); }),
              "--scene bras: it is no scene: bars, ramp, checker, noise, noise:SEED, grey, grey:0 to grey:255, or a "
              "picture (.png, .ppm, .pgm, .pnm), did you mean bars?");
    for (const char* word : {"part.jpg", "bars:1", "noise:", "noise:x", "noise:-1", "grey:256", "grey:1.5", "grey:"}) {
        EXPECT_THROW(parseScene(scene(word)), UsageError) << word;
    }
}

TEST(SceneWord, TileAndScaleAreForPictures) {
    EXPECT_EQ(refusal([] { parseScene(scene("bars", true)); }), "--tile is for a picture, as --scene part.png has it");
    EXPECT_EQ(refusal([] { parseScene(scene("", false, "1/mm")); }),
              "--scale is for a picture, as --scene part.png has it");
    EXPECT_EQ(refusal([] { parseScene(scene("part.png", false, "10")); }),
              "--scale 10: \"10\" is no density: it is written with its unit, as 10/mm; units are /um, /mm, /m");
    for (const char* scale : {"0/mm", "-1/mm", "1001/mm", "inf/mm", "nan/mm", "10mm", "x"}) {
        EXPECT_THROW(parseScene(scene("part.png", false, scale)), UsageError) << scale;
    }
}

TEST(LightWord, EachKeyHasItsValueAndTheOthersDoNotMatter) {
    const Illumination all = illuminated("reference=20us,flash=2,noise=1%,seed=7");
    EXPECT_EQ(all.light.referenceUs, 20);
    EXPECT_EQ(all.light.flashGain, 2);
    EXPECT_EQ(all.light.noise, 0.01);
    EXPECT_EQ(all.seed, 7U);
    const Illumination flash = illuminated("flash=0.5");
    EXPECT_EQ(flash.light.referenceUs, 0);
    EXPECT_EQ(flash.light.flashGain, 0.5);
    EXPECT_EQ(flash.light.noise, 0);
    EXPECT_EQ(flash.seed, 1U);
}

TEST(LightWord, OthersAreToldWithWhatThereIs) {
    EXPECT_EQ(
        refusal([] { illuminated("flsh=2"); }),
        "--light flsh=2: \"flsh=2\": there are reference=20us, flash=2, noise=1% and seed=7, did you mean flash?");
    EXPECT_EQ(refusal([] { illuminated("flash=2,noise"); }),
              "--light flash=2,noise: \"noise\" has no value: it is written as reference=20us,flash=2,noise=1%,seed=7");
    for (const char* light :
         {"reference=20", "reference=-1us", "reference=infus", "flash=1001", "flash=-1", "flash=nan", "noise=2",
          "noise=101%", "noise=inf", "seed=-1", "seed=1.5", "flash=2,", "="}) {
        EXPECT_THROW(illuminated(light), UsageError) << light;
    }
}

TEST(BeltWord, ASpeedGoesOnForEver) {
    EXPECT_THAT(movesOf("500mm/s"), ElementsAre(moves(Forever, 500)));
    EXPECT_THAT(movesOf("0.5m/s"), ElementsAre(moves(Forever, 500)));
    EXPECT_THAT(movesOf("30m/min"), ElementsAre(moves(Forever, 500)));
    EXPECT_THAT(movesOf(" -2mm/s"), ElementsAre(moves(Forever, -2)));
}

TEST(BeltWord, TimesOfStepsAddUp) {
    EXPECT_THAT(movesOf("500mm/s:20ms,0:5ms,-200mm/s:10ms,500mm/s"),
                ElementsAre(moves(20000, 500), moves(25000, 0), moves(35000, -200), moves(Forever, 500)));
    EXPECT_THAT(movesOf("1m/s:1s"), ElementsAre(moves(1e6, 1000)));
}

TEST(BeltWord, OthersAreToldWithWhatIsWrong) {
    EXPECT_EQ(refusal([] { movesOf("500"); }),
              "--belt 500: \"500\" is no speed: it is written with its unit, as 500mm/s; units are um/s, mm/s, m/s, "
              "m/min");
    EXPECT_EQ(refusal([] { movesOf("1mm/s,2mm/s"); }),
              "--belt 1mm/s,2mm/s: \"2mm/s\" never comes: a time ends the step before it, as 500mm/s:20ms");
    EXPECT_EQ(refusal([] { movesOf("1mm/s:0s,2mm/s"); }),
              "--belt 1mm/s:0s,2mm/s: \"1mm/s:0s\": a step lasts longer than no time");
    for (const char* profile : {"infmm/s", "nanmm/s", "500mm", "500mm/s:5", "500mm/s:", "500mm/s:-1ms", "500mm/s:infs",
                                "500mm/s:1ms,", ",500mm/s", "fast", "1mm/s:1ms:1ms"}) {
        EXPECT_THROW(movesOf(profile), UsageError) << profile;
    }
}

TEST(EncoderWord, ItsInputsAreThoseOfTheParametersUnlessTheyAreNamed) {
    const BeltEncoder free = encoderOf("10/mm");
    EXPECT_EQ(free.countsPerMm, 10);
    EXPECT_FALSE(free.isConnected);
    const BeltEncoder one = encoderOf("10000/m@GPI 3");
    EXPECT_EQ(one.countsPerMm, 10);
    EXPECT_TRUE(one.isConnected);
    EXPECT_EQ(one.a, 3U);
    EXPECT_EQ(one.b, std::nullopt);
    const BeltEncoder both = encoderOf("10/mm@0,front1");
    EXPECT_EQ(both.a, 0U);
    EXPECT_EQ(both.b, 9U);
}

TEST(EncoderWord, OthersAreToldWithWhatIsWrong) {
    EXPECT_EQ(refusal([] { encoderOf("10/mm@12"); }),
              "--encoder 10/mm@12: \"12\" is no input: they are 0 to 7, and front0 to front3");
    EXPECT_EQ(refusal([] { encoderOf("10/mm@0,1,2"); }),
              "--encoder 10/mm@0,1,2: \"@0,1,2\" are more inputs than the 2 that it drives");
    for (const char* encoder : {"10", "0/mm", "-1/mm", "100001/mm", "inf/mm", "nan/mm", "10/mm@", "10/mm@0,", "@0"}) {
        EXPECT_THROW(encoderOf(encoder), UsageError) << encoder;
    }
}

TEST(BarrierWord, APartComesOnceOrAgainAndAgain) {
    const BeltBarrier once = barrierOf("20mm:100mm");
    EXPECT_EQ(once.firstMm, 20);
    EXPECT_EQ(once.lengthMm, 100);
    EXPECT_EQ(once.pitchMm, 0);
    EXPECT_EQ(once.input, std::nullopt);
    const BeltBarrier again = barrierOf("0:0.1m:300mm@FRONT_GPI_2");
    EXPECT_EQ(again.firstMm, 0);
    EXPECT_EQ(again.lengthMm, 100);
    EXPECT_EQ(again.pitchMm, 300);
    EXPECT_EQ(again.input, 10U);
}

TEST(BarrierWord, OthersAreToldWithWhatIsWrong) {
    EXPECT_EQ(refusal([] { barrierOf("20mm"); }),
              "--barrier 20mm: it is written as FIRST:LENGTH or FIRST:LENGTH:PITCH, as 20mm:100mm:300mm");
    EXPECT_EQ(refusal([] { barrierOf("20mm:100mm:100mm"); }),
              "--barrier 20mm:100mm:100mm: the pitch \"100mm\": parts come further apart than they are long");
    for (const char* barrier : {"20:100", "20mm:0", "20mm:-1mm", "20mm:infmm", "nanmm:1mm", "20mm:1mm:0",
                                "1mm:1mm:2mm:3mm", "20mm:1mm@0,1", "20mm:1mm@", "20mm/s:1mm", ""}) {
        EXPECT_THROW(barrierOf(barrier), UsageError) << barrier;
    }
}

TEST(BeltWord, EncoderAndBarrierNeedABelt) {
    BeltWords words;
    words.encoder = "10/mm";
    EXPECT_EQ(refusal([&] { parseBelt(words); }), "--encoder needs a belt, as --belt 500mm/s has it");
    words.encoder.clear();
    words.barriers = {"20mm:100mm"};
    EXPECT_EQ(refusal([&] { parseBelt(words); }), "--barrier needs a belt, as --belt 500mm/s has it");
    EXPECT_THAT(parseBelt({}).moves, IsEmpty());
}

TEST(FaultWord, ALineIsDroppedRepeatedOrInverted) {
    EXPECT_EQ(inWords(faultOf("line:100:drop")), "line 100 does not arrive");
    EXPECT_EQ(inWords(faultOf("line:1:repeat")), "line 1 arrives twice");
    EXPECT_EQ(inWords(faultOf("line:every:invert")), "every line has its bits inverted");
    EXPECT_EQ(std::get<PlannedLineFault>(faultOf("line:every:invert")).nth, 0U);
}

TEST(FaultWord, AFrameIsLostTruncatedOrStalled) {
    EXPECT_EQ(inWords(faultOf("frame:3:lose")), "frame 3 is lost");
    EXPECT_EQ(inWords(faultOf("frame:every:truncate=100")), "every frame keeps 100 lines");
    EXPECT_EQ(inWords(faultOf("frame:3:stall=5ms")), "frame 3 meets a DMA that stands still for 5 ms");
    EXPECT_EQ(std::get<PlannedFrameFault>(faultOf("frame:3:stall=5ms")).amount, 5000);
}

TEST(FaultWord, CameraAndLinkAreGoneForATimeOrForGood) {
    EXPECT_EQ(inWords(faultOf("camera:10ms-30ms")), "the camera is gone from 10 ms to 30 ms");
    EXPECT_EQ(inWords(faultOf("link:0s-")), "the link is gone from 0 \u00B5s on");
    EXPECT_EQ(std::get<PlannedOutage>(faultOf("camera:1e-3s-2e-3s")).toUs, 2000);
}

TEST(FaultWord, OthersAreToldWithWhatThereIs) {
    EXPECT_EQ(refusal([] { faultOf("line:100:vanish"); }),
              "--fault line:100:vanish: \"vanish\" befalls no line: drop, repeat and invert do");
    EXPECT_EQ(
        refusal([] { faultOf("frame:1:stall"); }),
        "--fault frame:1:stall: \"stall\" befalls no frame: lose, truncate=100 (lines that are left) and stall=5ms "
        "do");
    EXPECT_EQ(refusal([] { faultOf("camera:30ms-10ms"); }),
              "--fault camera:30ms-10ms: \"30ms-10ms\" ends before it begins");
    EXPECT_EQ(refusal([] { faultOf("camera:30ms"); }),
              "--fault camera:30ms: \"30ms\" is no time from one to another: 10ms-30ms, or 10ms- for one without end");
    EXPECT_THAT(refusal([] { faultOf("cable:1"); }), HasSubstr("faults are written as line:100:drop"));
    for (const char* fault : {"line:0:drop", "line:-1:drop", "line:drop", "line:1", "frame:1:truncate=0",
                              "frame:1:truncate=1.5", "frame:1:truncate", "frame:1:stall=61s", "frame:1:stall=0s",
                              "frame:1:stall=infs", "camera:-10ms", "camera:10-20", "link:", "link:10ms-infs", ""}) {
        EXPECT_THROW(faultOf(fault), UsageError) << fault;
    }
}

TEST(DmaRateWord, ItHasAUnitOrNoLimit) {
    EXPECT_EQ(dmaRateOf("1GB/s"), 1e9);
    EXPECT_EQ(dmaRateOf("250kB/s"), 250000);
    EXPECT_EQ(dmaRateOf("unlimited"), Forever);
    EXPECT_EQ(dmaRateOf(""), std::nullopt);
    for (const char* rate : {"1", "0B/s", "-1MB/s", "infB/s", "nanB/s", "1GB", "fast"}) {
        EXPECT_THROW(dmaRateOf(rate), UsageError) << rate;
    }
}

TEST(WorldWords, AVerbCallsItsFirstWordByItsOwnName) {
    BeltWords words;
    words.name = "belt";
    words.profile = "500";
    EXPECT_THAT(refusal([&] { parseBelt(words); }), HasSubstr("belt 500: \"500\" is no speed"));
}

TEST(RunningBelt, ItsSpeedFollowsItsMoves) {
    const RunningBelt belt{movesOf("500mm/s:20ms,0:5ms,-200mm/s:10ms"), 0, {}, 1000};
    EXPECT_EQ(belt.speedAt(1000), 500);
    EXPECT_EQ(belt.speedAt(21000), 0);
    EXPECT_EQ(belt.speedAt(26000), -200);
    EXPECT_EQ(belt.speedAt(36000), 0);
}

}  // namespace
}  // namespace quillon::cli
