/// @file
/// What a change does beside what was asked for.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "cli/Parameters.h"
#include "cli/Session.h"
#include "cli/Terminal.h"
#include "cli/Values.h"

namespace quillon::cli {

/// What a parameter holds and, if it is a number, what it accepts.
struct Reading {
    Parameter parameter;
    Value value;
    std::string accepted;                           ///< empty for what no other parameter bounds
    std::optional<client::ParameterRecord> bounds;  ///< what `accepted` tells, of what another parameter bounds
};

/// All parameters that can be written, but texts and tables, at one moment.
struct Moment {
    std::map<int, Reading> readings;  ///< by id
    bool mirrored = false;            ///< whether the design's buffer mirrors the image
};

Moment observe(Session& session);
/// Whether the design's buffer mirrors the image, in either direction.
bool mirrorsImage(const client::SoftBoard& board);

/// Something that is another than before.
struct Change {
    std::string name;
    std::string before;
    std::string after;
    Json answer;  ///< "name", "before" and "after", each a value, or what is accepted
};

/// The parameters whose values differ, each with both.
std::vector<Change> changedValues(const Moment& before, const Moment& after);
/// The parameters whose bounds differ.
std::vector<Change> movedLimits(const Moment& before, const Moment& after);
Rows rowsOf(const std::vector<Change>& changes);
Json toJson(const std::vector<Change>& changes);
/// What the values don't show: a vantage point that still reads as set, and no longer holds. Empty for nothing.
std::string lostMirroring(const Moment& before, const Moment& after);

}  // namespace quillon::cli
