#include "cli/pictures/FileTemplate.h"

#include <algorithm>

#include "cli/ExitStatus.h"

namespace quillon::cli {

namespace {

constexpr std::size_t WidestNumber = 20;

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

}  // namespace

FileTemplate::FileTemplate(const std::string& text) {
    const auto refuse = [&text](const std::string& reason) { throw UsageError("\"" + text + "\": " + reason); };
    for (std::size_t i = 0; i < text.size(); ++i) {
        std::string& end = numbered_ ? back_ : front_;
        if (text[i] != '%' || text.compare(i, 2, "%%") == 0) {
            i += text[i] == '%' ? 1 : 0;
            end += text[i];
            continue;
        }
        if (numbered_) {
            refuse("a name takes one number, and %% for a percent sign");
        }
        numbered_ = true;
        const std::size_t digits = i + 1;
        i = static_cast<std::size_t>(
            std::find_if_not(text.begin() + static_cast<std::ptrdiff_t>(digits), text.end(), isDigit) - text.begin());
        if (i == text.size() || text[i] != 'd') {
            refuse("a number is written as %d or %03d, and a percent sign as %%");
        }
        for (const char digit : text.substr(digits, i - digits)) {
            width_ = std::min(width_ * 10 + static_cast<std::size_t>(digit - '0'), WidestNumber + 1);
        }
        padding_ = text[digits] == '0' ? '0' : ' ';
        if (width_ > WidestNumber) {
            refuse("a number has at most " + std::to_string(WidestNumber) + " places");
        }
    }
}

std::filesystem::path FileTemplate::name(std::uint64_t number) const {
    if (!numbered_) {
        return front_;
    }
    const std::string digits = std::to_string(number);
    return front_ + std::string(width_ - std::min(width_, digits.size()), padding_) + digits + back_;
}

}  // namespace quillon::cli
