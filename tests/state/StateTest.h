/// @file
/// What the tests of start-up, save and load share.
#pragma once

#include <gmock/gmock.h>

#include <span>
#include <string>
#include <vector>

#include "client/testing/BuiltApplet.h"
#include "quillon/PublicParameters.h"
#include "tests/files/TemporaryFolder.h"
#include "tests/state/ConfigurationKeys.h"

namespace quillon::state {

using client::testing::BuiltApplet;

/// A file of the folder golden/, whole.
std::string golden(const std::string& name);
/// The same in lines.
std::vector<std::string> goldenLines(const std::string& name);

/// An access of a golden list. The lists are indented: a step, such as the write of one parameter, at the margin; its
/// accesses below it; and below "limit NAME" the accesses of a step's refresh of one published limit.
struct ListedAccess {
    std::string line;
    int step;   ///< counts the steps, from 0
    int limit;  ///< counts the refreshes of the whole list, from 0; -1 outside of one
};
std::vector<ListedAccess> goldenAccesses(const std::string& name);
std::vector<std::string> linesOf(const std::vector<ListedAccess>& list);
/// The list if access `failing` fails with `code`: a refresh ends there, everything else ends the whole step.
std::vector<std::string> linesWithFault(const std::vector<ListedAccess>& list, std::size_t failing, int code);

/// The accesses that a board saw as the golden lists show them: of a table the first and the last three entries and the
/// sum of all.
std::vector<std::string> shownAccesses(const client::SoftBoard& board);

/// Whether the parameter's value has 64 bits. The pixel to inject does, although it is listed with the integers.
bool is64Bit(const PublicParameter& parameter);
/// The value of a public parameter as a configuration file shows it, without quotes.
std::string readAsText(client::Applet& applet, const std::string& name);
/// "NAME VALUE", or "NAME" for an empty text, for each of the named lines of a golden list of such lines.
std::vector<std::string> readAll(client::Applet& applet, std::span<const std::string> lines);

// Texts of configuration files.

/// `text` with `line` (and a line feed, unless it is empty) in place of the line of `key`.
std::string withLine(const std::string& text, const std::string& key, const std::string& line);
/// `text` without the line of `key`.
std::string withoutLine(const std::string& text, const std::string& key);
/// `text` with another value of `key`, as it stands in the file.
std::string withValue(const std::string& text, const std::string& key, const std::string& value);
/// The whole line of `key`, without the line feed; "no KEY" if there is none.
std::string lineOf(const std::string& text, const std::string& key);

/// An applet on a board of its own, and a folder for its files.
class StateTest : public TemporaryFolder {
protected:
    /// Writes `text` to a file and loads it.
    int load(const std::string& text);
    /// Saves to a file and returns the text of it; records a failure if the save answers a code.
    std::string save();

    BuiltApplet built;
    const std::string start = golden("start_up_state.mcf");
    const std::string other = golden("other_state.mcf");  ///< another value for every key that can have one
};

}  // namespace quillon::state
