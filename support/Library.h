/// @file
/// Finding and opening a shared library of the installation that this applet belongs to.
#pragma once

#include <memory>
#include <optional>
#include <string>

namespace orlo::tools::logging {

/// A library opened at run time. It is never closed: `closeOnRelease` stays false, and code of the library may be
/// running when the object goes.
class Library {
public:
    /// Opens `path`; a failure leaves isOpen() false and the loader's words in error().
    explicit Library(std::string path);
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
    ~Library();

    bool isOpen() const { return handle_ != nullptr; }
    void* symbol(const char* name) const;
    const std::string& error() const { return error_; }

private:
    void* handle_ = nullptr;
    bool closeOnRelease_ = false;
    std::string path_;
    std::string error_;
};

/// Opens `<root>/lib64/lib<name>.so`. Without a root it is the directory above the first "bin", "dll", "Hardware
/// Applets", "lib" or "lib64" (in any case) over the applet's own file, else ORLODIR5_64, else ORLODIR5. Null if there
/// is no root or no such library.
std::unique_ptr<Library> findLibrary(const char* name, const char* root = nullptr);

/// The directory above the first of `file`'s directories, from its own upwards, whose name marks an installation;
/// nothing if none does.
std::optional<std::string> rootAbove(std::string file);

}  // namespace orlo::tools::logging
