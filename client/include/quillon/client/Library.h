#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "quillon/client/Export.h"
#include "quillon/client/Functions.h"

namespace quillon::client {

/// libQuillon.so, loaded in a scope of its own. Copies share it; it is closed with the last of them, and with the
/// last Applet that came from it.
class QUILLON_CLIENT_API Library {
public:
    /// Loads the applet for a machine that has the SDK and the board's libraries where the system finds them.
    /// Throws LibraryError if a library or an exported function is missing.
    static Library open(const std::filesystem::path& file);

    /// Loads the applet of this installation with the stand-ins of its software board. Throws LibraryError if there is
    /// none (see findInstallation).
    static Library open();

    /// Loads the stand-ins of the software board from `standInDirectory` first, and then the applet, which finds them
    /// by their names. No search path needs to be set.
    static Library open(const std::filesystem::path& file, const std::filesystem::path& standInDirectory);

    /// The applet that this process has loaded already, as a host has that opened one. Throws LibraryError if there is
    /// none.
    static Library loaded();

    /// The exported functions; valid as long as the library is loaded.
    const Functions& functions() const;
    const std::filesystem::path& file() const;

    /// `Info` as it is: the result, and what the call left in the slots.
    int info(int key, int arg1 = 0, int arg2 = 0, void* in = nullptr, void* out = nullptr) const;
    /// The text that `key` stores in `out`; throws CallError if the key answers no 0.
    std::string infoText(int key) const;
    /// The value of a public constant such as "FG_COL24"; nothing for a name that the applet does not know.
    std::optional<int> constant(const std::string& name) const;
    /// The carried design image and icon; they live as long as the library.
    std::span<const std::byte> designImage() const;
    std::span<const std::byte> icon() const;

private:
    struct Loaded;
    friend class Applet;
    explicit Library(std::shared_ptr<const Loaded> loaded);
    std::span<const std::byte> block(int key) const;

    std::shared_ptr<const Loaded> loaded_;
};

}  // namespace quillon::client
