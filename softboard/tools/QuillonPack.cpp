/// @file
/// quillon-pack: makes what the applet carries (design image, icon) and the design file beside it, and shows what an
/// image holds.

#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

#include "softboard/src/DesignDescription.h"
#include "softboard/src/DesignImage.h"
#include "softboard/tools/Icon.h"

namespace {

constexpr const char* Usage =
    "quillon-pack image DESC -o FILE   pack the description DESC into a design image of 8255782 bytes\n"
    "quillon-pack tav DESC -o FILE     pack it into a design file, without filling\n"
    "quillon-pack icon -o FILE         draw the icon, a PNG file of 4676 bytes\n"
    "quillon-pack show FILE            print the description that an image or a design file holds\n"
    "quillon-pack --help               this text\n";

/// A command line that does not make sense.
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

std::string readFile(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    std::string content{std::istreambuf_iterator<char>(file), {}};
    if (!file) {
        throw std::runtime_error("cannot read " + name);
    }
    return content;
}

void writeFile(const std::string& name, const std::vector<std::uint8_t>& content) {
    std::ofstream file(name, std::ios::binary | std::ios::trunc);
    file.write(reinterpret_cast<const char*>(content.data()), static_cast<std::streamsize>(content.size()));
    if (!file.flush()) {
        throw std::runtime_error("cannot write " + name);
    }
}

void show(const std::string& name) {
    const std::string content = readFile(name);
    const auto image = softboard::unpackImage(content.data(), content.size());
    if (!image) {
        throw std::runtime_error(name + " is no undamaged design image");
    }
    std::cout << image->description << std::flush;
}

/// The file behind the "-o" that stands at `position`, the last thing on the line.
std::string outputFile(const std::vector<std::string>& arguments, std::size_t position) {
    if (arguments.size() != position + 2 || arguments[position] != "-o") {
        throw UsageError("expected -o FILE");
    }
    return arguments[position + 1];
}

void run(const std::vector<std::string>& arguments) {
    const std::string command = arguments.empty() ? "" : arguments[0];
    if (command == "--help" && arguments.size() == 1) {
        std::cout << Usage;
    } else if ((command == "image" || command == "tav") && arguments.size() > 1) {
        const std::string output = outputFile(arguments, 2);
        writeFile(output,
                  softboard::packImage(readFile(arguments[1]), command == "image" ? softboard::CarriedImageSize : 0));
    } else if (command == "icon") {
        const std::string output = outputFile(arguments, 1);
        writeFile(output, softboard::drawIcon());
    } else if (command == "show" && arguments.size() == 2) {
        show(arguments[1]);
    } else {
        throw UsageError("no such command");
    }
}

}  // namespace

int main(int argc, char** argv) {
    try {
        run({argv + 1, argv + argc});
        return 0;
    } catch (const UsageError& error) {
        std::cerr << "quillon-pack: " << error.what() << "\n" << Usage;
        return 2;
    } catch (const std::exception& error) {
        std::cerr << "quillon-pack: " << error.what() << "\n";
        return 1;
    }
}
