#include "cli/History.h"

#include <algorithm>
#include <array>
#include <utility>

#include "cli/Effects.h"
#include "cli/ExitStatus.h"

namespace quillon::cli {

namespace {

constexpr std::array actions{FG_DEBUGINSERT, FG_DEBUGWRITEPIXEL, FG_DEBUGWRITEFLAG, FG_SENDSOFTWARETRIGGER,
                             FG_SIGNAL_ANALYZER_CLEAR};

/// What acts when it is written is not written back.
bool isAction(const PublicParameter& known) {
    return std::ranges::find(actions, known.id) != actions.end() ||
           (known.kind == ParameterKind::String && known.id != FG_LUT_CUSTOM_FILE);
}

bool isState(const PublicParameter& known) {
    return known.access == ParameterAccess::ReadWrite && known.kind != ParameterKind::Forwarded;
}

/// The parameter with all its entries, without what the applet publishes of it.
Parameter bare(const PublicParameter& known) {
    Parameter parameter;
    parameter.name = known.name;
    parameter.id = known.id;
    parameter.kind = known.kind;
    if (known.kind == ParameterKind::Field) {
        parameter.run = Run{0, LookupTableSize};
    }
    return parameter;
}

/// Numbers first, as they make the tables; then the file, which is loaded when its name is written; then what the
/// tables hold beside it.
int rank(ParameterKind kind) {
    return kind == ParameterKind::Field ? 2 : kind == ParameterKind::String ? 1 : 0;
}

/// Ids of the values that are not as wanted, in the order in which they are to be written.
std::vector<int> differing(const State& wanted, const State& present) {
    std::vector<int> ids;
    for (const auto& [id, value] : wanted.values) {
        const auto found = present.values.find(id);
        if (found != present.values.end() && found->second != value) {
            ids.push_back(id);
        }
    }
    if (ids.empty() && wanted.mirrored && !present.mirrored) {
        ids.push_back(FG_VANTAGEPOINT);  // a width ends the mirroring that the vantage point stands for
    }
    std::ranges::stable_sort(ids, {}, [](int id) { return rank(findPublicParameter(id)->kind); });
    return ids;
}

}  // namespace

State State::of(client::Applet& applet, const client::SoftBoard& board) {
    State state;
    for (const PublicParameter& known : PublicParameters) {
        Value value;
        if (isState(known) && readValue(applet, bare(known), value) == 0) {
            state.values.emplace(known.id, std::move(value));
        }
    }
    state.mirrored = mirrorsImage(board);
    return state;
}

void History::begin(client::Applet& applet, const client::SoftBoard& board) {
    now_ = State::of(applet, board);
}

void History::note(client::Applet& applet, const client::SoftBoard& board, const std::string& command) {
    constexpr std::size_t kept = 100;
    const State before = std::exchange(now_, State::of(applet, board));
    Entry entry{command, {{}, before.mirrored}};
    for (const int id : differing(before, now_)) {
        entry.before.values.emplace(id, before.values.at(id));
    }
    if (entry.before.values.empty()) {
        return;
    }
    changes_.push_back(std::move(entry));
    if (changes_.size() > kept) {
        changes_.pop_front();
    }
}

History::Undone History::undo(client::Applet& applet, const client::SoftBoard& board) {
    if (changes_.empty()) {
        throw UsageError("there is nothing to undo");
    }
    const Entry entry = std::move(changes_.back());
    changes_.pop_back();
    State wanted = now_;
    wanted.mirrored = entry.before.mirrored;
    for (const auto& [id, value] : entry.before.values) {
        wanted.values[id] = value;
    }
    // A value may wait for another that bounds it, and may move one that was right.
    constexpr int rounds = 8;
    std::vector<int> open = differing(wanted, now_);
    bool moved = true;
    for (int round = 0; moved && !open.empty() && round < rounds; ++round) {
        const State before = now_;
        for (const int id : open) {
            const PublicParameter& known = *findPublicParameter(id);
            const std::vector<int> still = differing(wanted, now_);
            if (isAction(known) || std::ranges::find(still, id) == still.end()) {
                continue;
            }
            // What is refused the next look finds.
            static_cast<void>(writeValue(applet, bare(known), wanted.values.at(id)));
            now_ = State::of(applet, board);
        }
        moved = before != now_;
        open = differing(wanted, now_);
    }
    Undone undone{entry.command, {}, open};
    for (const auto& [id, value] : entry.before.values) {
        if (std::ranges::find(open, id) == open.end()) {
            undone.back.push_back(id);
        }
    }
    return undone;
}

}  // namespace quillon::cli
