/// @file
/// The words that tell of a scene, a belt and faults: options of `grab`, and verbs of their own.
#pragma once

#include <string>
#include <vector>

#include "cli/Verb.h"
#include "cli/World.h"

namespace quillon::cli {

/// Words as they were written; empty for what was not. `name` is what messages call the first of them.
struct SceneWords {
    const char* name = "--scene";
    std::string scene;
    bool tile = false;
    std::string scale;
    std::string light;
};
struct BeltWords {
    const char* name = "--belt";
    std::string profile;
    std::string encoder;
    std::vector<std::string> barriers;
};
struct FaultWords {
    const char* name = "--fault";
    std::vector<std::string> faults;
    std::string dmaRate;
};

/// Add the options to a verb, but for the one that `name` stands for.
void addSceneOptions(Verb& verb, SceneWords& words);
void addBeltOptions(Verb& verb, BeltWords& words);
void addFaultOptions(Verb& verb, FaultWords& words);

/// What they mean. Throw UsageError, with the word, what is wrong with it and what would be right.
Scene parseScene(const SceneWords& words);
Belt parseBelt(const BeltWords& words);
Faults parseFaults(const FaultWords& words);

/// Tells hints on standard error. `set`: what stands in front of their assignments, "--set " or "set ".
void tellHints(Console& console, const std::vector<Hint>& hints, const char* set);

}  // namespace quillon::cli
