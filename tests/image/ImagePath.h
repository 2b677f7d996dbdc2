/// @file
/// What the tests of the image path have in common: an applet on a software board, and what the design and the users
/// see of it.
#pragma once

#include <gmock/gmock.h>

#include <cstdint>
#include <functional>
#include <string>
#include <type_traits>
#include <vector>

#include "client/testing/BuiltApplet.h"
#include "quillon/Vocabulary.h"

namespace quillon::image_test {

/// An applet that has sent its start-up state, with an empty transcript.
///
/// Lines of the transcript leave out "Device1_Process0_" and the values of a whole table:
/// "Buffer_0_SensorWidth = 2048", "Overflow_OverflowOccurred ? 0", "LookupTable_R_LUTcontent = [0..16383]".
struct ImagePath : client::testing::BuiltApplet {
    ImagePath() { forget(); }

    /// Writes a public parameter and answers the applet's code.
    template <class Value>
    int set(int id, Value value) {
        if constexpr (std::is_floating_point_v<Value>) {
            return applet.setDouble(id, value);
        } else {
            return applet.setUnsigned(id, static_cast<std::uint32_t>(value));
        }
    }
    template <class Value>
    Value get(int id) {
        if constexpr (std::is_floating_point_v<Value>) {
            return applet.readDouble(id);
        } else {
            return applet.readUnsigned(id);
        }
    }

    void forget() { board.clearTranscript(); }
    std::vector<std::string> accesses() const;  ///< reads and writes since the last forget()
    std::vector<std::string> writes() const;
    std::vector<std::string> reads() const;

    std::uint64_t maximum(int id) const;         ///< published, of an integer parameter
    double realMaximum(int id) const;            ///< published, of a double parameter
    int accessFlags(int id) const;               ///< published
    std::vector<std::string> published() const;  ///< "FG_WIDTH flags 3 maximum 16384" of every parameter with a range
};

/// The code that planned faults answer.
inline constexpr int DesignFailure = -4711;

/// The code that the caller gets when `access` answers DesignFailure: that code, but for the switches to trash, which
/// fail as "internal failure".
int codeOfFailing(const std::string& access);

/// The first `count` of `accesses`, the last of them failed with DesignFailure.
std::vector<std::string> failingAt(std::vector<std::string> accesses, std::size_t count);

/// Fails each access of a write of `value` to the parameter `id` in turn, each time on a fresh board that `prepare`
/// has set up: the failure's code comes back, and the accesses before it stand. `check` looks at the rest.
template <class Value>
void expectEachFailure(const std::function<void(ImagePath&)>& prepare, int id, Value value,
                       const std::vector<std::string>& accesses, const std::function<void(ImagePath&)>& check) {
    for (std::size_t failing = 1; failing <= accesses.size(); ++failing) {
        SCOPED_TRACE("failing: " + accesses[failing - 1]);
        ImagePath path;
        prepare(path);
        path.forget();
        path.board.planFaultAt(static_cast<unsigned>(failing), DesignFailure);
        EXPECT_EQ(path.set(id, value), codeOfFailing(accesses[failing - 1]));
        EXPECT_EQ(path.applet.lastError(), codeOfFailing(accesses[failing - 1]));
        EXPECT_THAT(path.accesses(), ::testing::ElementsAreArray(failingAt(accesses, failing)));
        check(path);
    }
}

/// The same for a parameter that reads as it is remembered: the old value reads back, and nothing that is published has
/// changed.
template <class Value>
void expectEachFailureRestores(const std::function<void(ImagePath&)>& prepare, int id, Value value,
                               const std::vector<std::string>& accesses) {
    using Remembered = std::conditional_t<std::is_floating_point_v<Value>, double, std::uint32_t>;
    ImagePath untouched;
    prepare(untouched);
    const auto before = untouched.get<Remembered>(id);
    const auto published = untouched.published();
    expectEachFailure(prepare, id, value, accesses, [&](ImagePath& path) {
        EXPECT_EQ(path.get<Remembered>(id), before);
        EXPECT_EQ(path.published(), published);
    });
}

inline void asStarted(ImagePath& /*path*/) {}

}  // namespace quillon::image_test
