/// @file
/// What a load of a configuration does without a word.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "cli/Json.h"
#include "cli/Session.h"
#include "cli/Terminal.h"

namespace quillon::cli {

/// Something to say about a file. A note does not keep the file from doing what it says.
struct Complaint {
    int line;  ///< 0 for what is not there
    std::string key;
    std::string text;
    bool note = false;
    Json details{};  ///< what there is to tell besides: the value of the file, what it becomes, the refusal
};

/// What the file holds that a load would refuse, change or not look at, in the order of the lines. Loads the file into
/// the session's applet, more than once. Throws RefusedError for a file that cannot be read.
std::vector<Complaint> checkConfiguration(Session& session, const std::filesystem::path& file);

/// Whether there are only notes.
bool isSound(const std::vector<Complaint>& complaints);

/// "conveyor.mcf:11: error: FG_WIDTH: ...".
Json toJson(const Complaint& complaint);
std::string inWords(const std::filesystem::path& file, const Complaint& complaint, const Painter& painter);

/// What the session's applet holds and `file`, which was saved from it, does not bring back in another one:
/// "FG_LINEORDER = FG_LINEORDER_BGR (1)".
std::vector<std::string> notKept(Session& session, Session& other, const std::filesystem::path& file);

}  // namespace quillon::cli
