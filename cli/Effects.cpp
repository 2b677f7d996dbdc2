#include "cli/Effects.h"

#include <utility>

#include "cli/Answers.h"
#include "quillon/client/Accepted.h"
#include "quillon/client/Text.h"

namespace quillon::cli {

namespace {

bool isNumber(const PublicParameter& known) {
    return known.kind != ParameterKind::Field && known.kind != ParameterKind::String;
}

/// The bounds of a number that other parameters move. The debug points are the design's, and counting them is a write.
std::optional<client::ParameterRecord> boundsOf(client::Applet& applet, const Parameter& parameter) {
    const bool moves = parameter.record && !parameter.isEnumerated() && parameter.id != FG_DEBUGSOURCE &&
                       !client::rangeReason(parameter.name).empty();
    return moves ? std::optional(client::acceptedNow(applet, *parameter.record)) : std::nullopt;
}

Json acceptedOf(const Reading& reading) {
    Json json = object({});
    putAccepted(json, reading.bounds.value());
    if (const std::string unit = client::readableUnit(reading.bounds->unit); !unit.empty()) {
        put(json, "unit", unit);
    }
    return json;
}

Json answerOf(const std::string& name, Json before, Json after) {
    return object({{"name", name}, {"before", std::move(before)}, {"after", std::move(after)}});
}

}  // namespace

bool mirrorsImage(const client::SoftBoard& board) {
    try {
        return board.integer("Device1_Process0_Buffer_0_XMirror") != 0 ||
               board.integer("Device1_Process0_Buffer_0_YMirror") != 0;
    } catch (const client::CallError&) {
        return false;  // a design without a buffer
    }
}

Moment observe(Session& session) {
    client::Applet& applet = session.applet();
    const std::vector<client::ParameterRecord> trees = applet.parameterInfo();
    Moment moment;
    for (const PublicParameter& known : PublicParameters) {
        if (known.access != ParameterAccess::ReadWrite || !isNumber(known)) {
            continue;
        }
        Reading reading;
        reading.parameter = findParameter(applet, known.name, trees);
        if (readValue(applet, reading.parameter, reading.value) == 0) {
            reading.bounds = boundsOf(applet, reading.parameter);
            reading.accepted = reading.bounds ? client::acceptedValues(*reading.bounds) : "";
            moment.readings.emplace(known.id, std::move(reading));
        }
    }
    moment.mirrored = mirrorsImage(session.board());
    return moment;
}

std::vector<Change> changedValues(const Moment& before, const Moment& after) {
    std::vector<Change> changes;
    for (const auto& [id, reading] : before.readings) {
        const auto now = after.readings.find(id);
        if (now == after.readings.end()) {
            continue;
        }
        // Compared as they are shown: a file keeps twelve digits of a number.
        Change change{reading.parameter.name, inWords(reading.parameter, reading.value),
                      inWords(reading.parameter, now->second.value), Json()};
        if (change.before != change.after) {
            change.answer = answerOf(change.name, valueOf(reading.parameter, reading.value),
                                     valueOf(reading.parameter, now->second.value));
            changes.push_back(std::move(change));
        }
    }
    return changes;
}

std::vector<Change> movedLimits(const Moment& before, const Moment& after) {
    std::vector<Change> changes;
    for (const auto& [id, reading] : before.readings) {
        const auto now = after.readings.find(id);
        if (now != after.readings.end() && now->second.accepted != reading.accepted) {
            changes.push_back({reading.parameter.name, reading.accepted, now->second.accepted,
                               answerOf(reading.parameter.name, acceptedOf(reading), acceptedOf(now->second))});
        }
    }
    return changes;
}

Rows rowsOf(const std::vector<Change>& changes) {
    Rows rows;
    for (const Change& change : changes) {
        rows.push_back({change.name, change.before, "->", change.after});
    }
    return rows;
}

Json toJson(const std::vector<Change>& changes) {
    Json list = emptyList();
    for (const Change& change : changes) {
        append(list, change.answer);
    }
    return list;
}

std::string lostMirroring(const Moment& before, const Moment& after) {
    const auto vantagePoint = after.readings.find(FG_VANTAGEPOINT);
    const auto vantagePointBefore = before.readings.find(FG_VANTAGEPOINT);
    if (!before.mirrored || after.mirrored || vantagePoint == after.readings.end() ||
        vantagePointBefore == before.readings.end() || vantagePoint->second.value != vantagePointBefore->second.value) {
        return "";
    }
    return "the design no longer mirrors, though FG_VANTAGEPOINT reads " +
           inWords(vantagePoint->second.parameter, vantagePoint->second.value) + " as before; set it again";
}

}  // namespace quillon::cli
