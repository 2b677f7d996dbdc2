#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "client/testing/BuiltApplet.h"
#include "quillon/Vocabulary.h"

namespace quillon {

using Lines = std::vector<std::string>;

/// An applet that has just driven its whole start-up state into a software board.
class TriggerTest : public testing::Test {
protected:
    int set(int id, std::int32_t value) { return applet.setInt(id, value); }
    int set(int id, double value) { return applet.setDouble(id, value); }
    void read(int id, std::int32_t& value) { value = applet.readInt(id); }
    void read(int id, double& value) { value = applet.readDouble(id); }

    /// What reaches the design when `id` is set to `value`, which is accepted and reads back.
    template <class Value>
    Lines accessesOf(int id, Value value) {
        board.clearTranscript();
        EXPECT_EQ(set(id, value), 0) << "parameter " << id << ", value " << value;
        Lines accesses = board.accesses();
        Value readBack{};
        read(id, readBack);
        EXPECT_EQ(readBack, value) << "parameter " << id;
        return accesses;
    }

    /// The same, where what reaches the design is shown elsewhere.
    template <class Value>
    void expectAccepted(int id, Value value) {
        accessesOf(id, value);
    }

    /// `value` is answered with `code`, nothing reaches the design, and the parameter reads as before.
    template <class Value>
    void expectRefused(int id, Value value, int code = -6000) {
        Value before{};
        read(id, before);
        board.clearTranscript();
        EXPECT_EQ(set(id, value), code) << "parameter " << id << ", value " << value;
        EXPECT_EQ(applet.lastError(), code);
        EXPECT_THAT(board.accesses(), testing::IsEmpty());
        Value after{};
        read(id, after);
        EXPECT_EQ(after, before) << "parameter " << id;
    }

    client::ParameterRecord record(int id) const {
        const auto trees = applet.parameterInfo();
        const client::ParameterRecord* found = client::findRecord(trees, id);
        return found != nullptr ? *found : client::ParameterRecord{};
    }
    /// What users are shown: 1 for read-only, 7 for open, in the mode that the applet is in.
    int accessFlags(int id) const { return record(id).accessFlags; }
    double maximum(int id) const { return std::get<client::Range<double>>(record(id).range).max; }

    client::testing::BuiltApplet built;
    client::Applet& applet = built.applet;
    client::SoftBoard& board = built.board;
};

}  // namespace quillon
