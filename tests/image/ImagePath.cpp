#include "tests/image/ImagePath.h"

#include <stdexcept>
#include <variant>

namespace quillon::image_test {

namespace {

using client::Access;
using client::Direction;
using client::ParameterRecord;

std::string shortLine(Access access) {
    const std::string process = "Device1_Process0_";
    if (access.name.starts_with(process)) {
        access.name.erase(0, process.size());
    }
    if (access.value.starts_with("[0..16383]=")) {
        access.value.erase(access.value.find('='));
    }
    return access.line();
}

template <class Kept>
std::vector<std::string> linesOf(const client::SoftBoard& board, Kept kept) {
    std::vector<std::string> lines;
    for (const Access& access : board.transcript()) {
        if (access.direction != Direction::Call && kept(access)) {
            lines.push_back(shortLine(access));
        }
    }
    return lines;
}

ParameterRecord recordOf(const client::Applet& applet, int id) {
    const auto trees = applet.parameterInfo();
    const ParameterRecord* record = client::findRecord(trees, id);
    if (record == nullptr) {
        throw std::runtime_error("no record of parameter " + std::to_string(id));
    }
    return *record;
}

void appendPublished(const std::vector<ParameterRecord>& records, std::vector<std::string>& lines) {
    for (const ParameterRecord& record : records) {
        if (!record.isGroup()) {
            const std::string maximum = std::visit(
                [](const auto& range) -> std::string {
                    if constexpr (requires { range.max; }) {
                        return " maximum " + std::to_string(range.max);
                    } else {
                        return "";
                    }
                },
                record.range);
            lines.push_back(record.symbol + " flags " + std::to_string(record.accessFlags) + maximum);
        }
        appendPublished(record.children, lines);
    }
}

}  // namespace

std::vector<std::string> ImagePath::accesses() const {
    return linesOf(board, [](const Access&) { return true; });
}

std::vector<std::string> ImagePath::writes() const {
    return linesOf(board, [](const Access& access) { return access.direction == Direction::Write; });
}

std::vector<std::string> ImagePath::reads() const {
    return linesOf(board, [](const Access& access) { return access.direction == Direction::Read; });
}

std::uint64_t ImagePath::maximum(int id) const {
    return std::get<client::Range<std::uint64_t>>(recordOf(applet, id).range).max;
}

double ImagePath::realMaximum(int id) const {
    return std::get<client::Range<double>>(recordOf(applet, id).range).max;
}

int ImagePath::accessFlags(int id) const {
    return recordOf(applet, id).accessFlags;
}

std::vector<std::string> ImagePath::published() const {
    std::vector<std::string> lines;
    appendPublished(applet.parameterInfo(), lines);
    return lines;
}

int codeOfFailing(const std::string& access) {
    return access.find("_VirtualTrash_") != std::string::npos ? -2031 : DesignFailure;
}

std::vector<std::string> failingAt(std::vector<std::string> accesses, std::size_t count) {
    accesses.resize(count);
    std::string& last = accesses.back();
    // A read that fails has no value to show.
    if (const auto asked = last.find(" ? "); asked != std::string::npos) {
        last.erase(asked + 3);
    }
    last += " ! " + std::to_string(DesignFailure);
    return accesses;
}

}  // namespace quillon::image_test
