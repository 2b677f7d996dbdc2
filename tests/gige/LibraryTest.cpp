#include <gmock/gmock.h>

#include <arv.h>

#include <cmath>
#include <iostream>
#include <memory>
#include <random>
#include <regex>
#include <set>
#include <thread>

#include "tests/gige/Programs.h"

namespace quillon::gige {
namespace {

using namespace std::chrono_literals;

struct Unref {
    void operator()(void* object) const { g_object_unref(object); }
};
template <class Type>
using Object = std::unique_ptr<Type, Unref>;

/// What a call of the library has to say against it; empty: nothing.
class Complaint {
public:
    Complaint() = default;
    Complaint(const Complaint&) = delete;
    Complaint& operator=(const Complaint&) = delete;
    ~Complaint() { g_clear_error(&error_); }
    GError** operator&() { return &error_; }
    std::string words() const { return error_ != nullptr ? error_->message : ""; }

private:
    GError* error_ = nullptr;
};

struct Frame {
    bool complete = false;
    int width = 0;
    int height = 0;
    std::size_t bytes = 0;
};

/// A camera of the library, and its stream.
class Camera {
public:
    Camera() {
        Complaint complaint;
        camera_.reset(arv_camera_new("127.0.0.1", &complaint));
        EXPECT_EQ(complaint.words(), "");
    }
    bool found() const { return camera_ != nullptr; }
    ArvDevice* device() const { return arv_camera_get_device(camera_.get()); }

    void start() {
        constexpr int Buffers = 10;
        Complaint complaint;
        stream_.reset(arv_camera_create_stream(camera_.get(), nullptr, nullptr, &complaint));
        ASSERT_EQ(complaint.words(), "");
        // Whatever gets lost while others have the processor may be asked for again.
        g_object_set(stream_.get(), "packet-request-ratio", 2.0, nullptr);
        const guint size = arv_camera_get_payload(camera_.get(), nullptr);
        for (int i = 0; i < Buffers; ++i) {
            arv_stream_push_buffer(stream_.get(), arv_buffer_new(size, nullptr));
        }
        arv_camera_start_acquisition(camera_.get(), &complaint);
        EXPECT_EQ(complaint.words(), "");
    }
    void stop() {
        arv_camera_stop_acquisition(camera_.get(), nullptr);
        stream_.reset();
    }
    /// The next frame; nothing: none came within that time.
    std::optional<Frame> next(std::chrono::microseconds patience = std::chrono::seconds(5)) {
        ArvBuffer* const buffer = arv_stream_timeout_pop_buffer(stream_.get(), static_cast<guint64>(patience.count()));
        if (buffer == nullptr) {
            return std::nullopt;
        }
        Frame frame;
        frame.complete = arv_buffer_get_status(buffer) == ARV_BUFFER_STATUS_SUCCESS;
        if (frame.complete) {
            frame.width = arv_buffer_get_image_width(buffer);
            frame.height = arv_buffer_get_image_height(buffer);
            arv_buffer_get_data(buffer, &frame.bytes);
        }
        arv_stream_push_buffer(stream_.get(), buffer);
        return frame;
    }
    /// Lets go of all frames that have come already.
    void forget() {
        while (next(std::chrono::microseconds(1))) {
        }
    }

private:
    Object<ArvCamera> camera_;
    Object<ArvStream> stream_;
};

/// Sets a feature by its words; what the device has against it.
std::string set(ArvDevice* device, const std::string& name, const std::string& value) {
    Complaint complaint;
    ArvGcNode* const node = arv_device_get_feature(device, name.c_str());
    arv_gc_feature_node_set_value_from_string(ARV_GC_FEATURE_NODE(node), value.c_str(), &complaint);
    return complaint.words();
}

std::string get(ArvDevice* device, const std::string& name) {
    Complaint complaint;
    ArvGcNode* const node = arv_device_get_feature(device, name.c_str());
    const char* const value = arv_gc_feature_node_get_value_as_string(ARV_GC_FEATURE_NODE(node), &complaint);
    return value != nullptr ? value : "";
}

/// Frames of these come when something else says so, take longer, or are others; writing those touches files.
bool holdsFramesUp(const std::string& name) {
    static const std::regex Names(
        "TRIG|Trigger|EXSYNC|LINEPERIODE|Rate|RATE|Acquisition|SIMULATOR|TestPattern|DEBUG|TIMEOUT|UserSet|TLParams|"
        "HEIGHT|"
        "Height|"
        "SENSOR|Sensor|EXPOSURE|Exposure|SHAFT");
    return std::regex_search(name, Names);
}

/// Numbers and choices that can be set, with all that a viewer shows.
void collect(ArvGc* document, const char* category, std::vector<std::string>& names) {
    ArvGcNode* const node = arv_gc_get_node(document, category);
    for (const GSList* at = arv_gc_category_get_features(ARV_GC_CATEGORY(node)); at != nullptr; at = at->next) {
        const char* const name = static_cast<const char*>(at->data);
        ArvGcNode* const feature = arv_gc_get_node(document, name);
        if (ARV_IS_GC_CATEGORY(feature)) {
            collect(document, name, names);
        } else if ((ARV_IS_GC_INTEGER(feature) || ARV_IS_GC_FLOAT(feature) || ARV_IS_GC_ENUMERATION(feature)) &&
                   arv_gc_feature_node_get_actual_access_mode(ARV_GC_FEATURE_NODE(feature)) == ARV_GC_ACCESS_MODE_RW) {
            names.emplace_back(name);
        }
    }
}

/// Any value that a feature's own limits allow.
class AnyValue {
public:
    explicit AnyValue(unsigned seed) : random_(seed) {}

    std::size_t below(std::size_t count) { return std::uniform_int_distribution<std::size_t>(0, count - 1)(random_); }
    std::string of(ArvDevice* device, const std::string& name) {
        ArvGcNode* const node = arv_device_get_feature(device, name.c_str());
        if (ARV_IS_GC_ENUMERATION(node)) {
            guint count = 0;
            const std::unique_ptr<const char*, decltype(&g_free)> choices(
                arv_device_dup_available_enumeration_feature_values_as_strings(device, name.c_str(), &count, nullptr),
                g_free);
            return count > 0 ? choices.get()[below(count)] : "";
        }
        if (ARV_IS_GC_FLOAT(node)) {
            double least = 0.0;
            double most = 0.0;
            arv_device_get_float_feature_bounds(device, name.c_str(), &least, &most, nullptr);
            return std::to_string(std::uniform_real_distribution<double>(least, most)(random_));
        }
        gint64 least = 0;
        gint64 most = 0;
        arv_device_get_integer_feature_bounds(device, name.c_str(), &least, &most, nullptr);
        const gint64 step =
            std::max<gint64>(1, arv_device_get_integer_feature_increment(device, name.c_str(), nullptr));
        return std::to_string(least + step * std::uniform_int_distribution<gint64>(0, (most - least) / step)(random_));
    }

private:
    std::mt19937 random_;
};

TEST(FeaturesWhileStreaming, LetFramesComeOn) {
    constexpr int Changes = 50;
    const int wanted = GTEST_FLAG_GET(random_seed);
    const unsigned seed = wanted != 0 ? static_cast<unsigned>(wanted) : std::random_device()() % 99999 + 1;
    std::cout << "--gtest_random_seed=" << seed << '\n';
    AnyValue any(seed);
    const Served served(
        {"--set", "FG_WIDTH=256", "--set", "FG_HEIGHT=256", "--set", "FG_LINEPERIODE=40", "--scene", "bars"});
    Camera camera;
    ASSERT_TRUE(camera.found());
    ArvDevice* const device = camera.device();
    std::vector<std::string> names;
    collect(arv_device_get_genicam(device), "Root", names);
    ASSERT_GT(names.size(), 100U);
    ASSERT_NO_FATAL_FAILURE(camera.start());
    int refused = 0;
    int frames = 0;
    for (int change = 0; change < Changes; ++change) {
        const std::string& name = names[any.below(names.size())];
        const std::string before = get(device, name);
        const std::string value = any.of(device, name);
        const std::string complaint = set(device, name, value);
        SCOPED_TRACE("seed " + std::to_string(seed) + ", change " + std::to_string(change) + ": " + name + " = " +
                     value + ", which was " + before + ": " + (complaint.empty() ? "done" : complaint));
        refused += complaint.empty() ? 0 : 1;
        camera.forget();
        if (!holdsFramesUp(name)) {
            const auto frame = camera.next();
            ASSERT_TRUE(frame);
            EXPECT_TRUE(frame->complete);
            ++frames;
        }
        if (!before.empty() && get(device, name) != before) {
            set(device, name, before);
        }
        camera.forget();
        const auto frame = camera.next();
        ASSERT_TRUE(frame) << "it is " << get(device, name) << " again";
        EXPECT_TRUE(frame->complete);
        ++frames;
    }
    // What is never accepted.
    EXPECT_NE(set(device, "Width", "5"), "");
    EXPECT_NE(set(device, "FG_XOFFSET", "1000000"), "");
    EXPECT_EQ(get(device, "DeviceRefusalCode").substr(0, 1), "-");
    EXPECT_TRUE(camera.next());
    std::cout << frames << " frames, " << refused << " of " << Changes << " values refused\n";
    camera.stop();
    EXPECT_EQ(get(device, "DeviceSerialNumber"), "QUILLON-0");
}

// The controller opens and closes the gate by turning the polarity of an input that nothing is connected to.
TEST(FrameHeights, AreThoseThatAGateLeaves) {
    constexpr int Width = 64;
    constexpr int Height = 20000;  // 2 s
    const Served served({"--set", "FG_WIDTH=64", "--set", "FG_HEIGHT=20000", "--set", "FG_LINEPERIODE=100", "--set",
                         "FG_IMGTRIGGERMODE=ASYNC_GATED"});
    Camera camera;
    ASSERT_TRUE(camera.found());
    ASSERT_NO_FATAL_FAILURE(camera.start());
    const auto gate = [&](const char* activation) {
        ASSERT_EQ(set(camera.device(), "TriggerActivation", activation), "");
    };
    std::set<int> heights;
    for (const std::chrono::milliseconds open : {20ms, 200ms, 80ms}) {
        gate("FallingEdge");
        std::this_thread::sleep_for(open);
        gate("RisingEdge");
        const auto frame = camera.next();
        ASSERT_TRUE(frame);
        EXPECT_TRUE(frame->complete);
        EXPECT_EQ(frame->width, Width);
        EXPECT_GE(frame->height, open * 10 / 1ms - 10) << "ten lines in a millisecond";
        EXPECT_LT(frame->height, Height);
        EXPECT_EQ(frame->bytes, std::size_t{3} * Width * static_cast<std::size_t>(frame->height));
        heights.insert(frame->height);
    }
    EXPECT_EQ(heights.size(), 3U) << testing::PrintToString(heights);
    std::cout << "lines: " << testing::PrintToString(heights) << '\n';
}

TEST(FrameHeights, AreThoseThatAreSetBetweenTwoAcquisitions) {
    const Served served({"--set", "FG_WIDTH=64"});
    Camera camera;
    ASSERT_TRUE(camera.found());
    for (const int height : {300, 20, 1000}) {
        ASSERT_EQ(set(camera.device(), "Height", std::to_string(height)), "");
        ASSERT_NO_FATAL_FAILURE(camera.start());
        const auto frame = camera.next();
        ASSERT_TRUE(frame);
        EXPECT_TRUE(frame->complete);
        EXPECT_EQ(frame->height, height);
        camera.stop();
    }
}

}  // namespace
}  // namespace quillon::gige
