/// @file
/// What may stand where on a command line: for the completion scripts of shells and for the lines of a session.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "cli/LineEditor.h"
#include "cli/Verb.h"

namespace quillon::cli {

using Words = std::vector<std::string>;

/// What stands behind an option or, where that is empty, as the words of a verb. An empty verb is every verb.
struct CompletionRule {
    std::string_view verb;
    std::string_view option;
    /// A kind of knownWords(), or "assignments", "files", "folders", the suffix of files in brackets, "(.mcf)", or else
    /// a list of words.
    std::string_view kind;
};
/// The rows of every verb come last, as a verb may have an option of that name for itself.
std::span<const CompletionRule> completionRules();

/// All names of an option: "-o", "--output". None for what is no option.
Words namesOf(const Description::Option& option);
/// The long options of a verb, and of every verb, in alphabetical order; the latter alone for an empty name.
Words optionsOf(const Description& command, const std::string& verb);

/// Words by their kind: verbs, parameters, constants, groups, registers, and the enumerators of each parameter under
/// its name.
std::vector<std::pair<std::string, Words>> knownWords(const Description& command, Session& session);

/// The words that may stand on a line behind others.
class Completions {
public:
    Completions(Description command, Session& session);
    /// For the word that begins so, behind these.
    Candidates after(const Words& words, const std::string& beginning) const;

private:
    std::string kindBehind(const std::string& verb, const std::string& option) const;
    std::string kindOf(const std::string& verb) const;
    Words wordsOf(const std::string& kind) const;

    Description command_;
    std::vector<std::pair<std::string, Words>> known_;
};

}  // namespace quillon::cli
