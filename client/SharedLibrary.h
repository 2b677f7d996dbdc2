#pragma once

#include <filesystem>

namespace quillon::client {

/// A shared library that stays loaded as long as the object lives.
class SharedLibrary {
public:
    /// Loads `file` with all its symbols bound and none of them offered to other libraries.
    /// Throws LibraryError with the loader's own words.
    explicit SharedLibrary(const std::filesystem::path& file);
    /// The library of this SONAME that the process has loaded already. Throws LibraryError if there is none.
    static SharedLibrary loaded(const char* name);
    SharedLibrary(SharedLibrary&& other) noexcept;
    SharedLibrary& operator=(SharedLibrary&& other) noexcept;
    ~SharedLibrary();

    /// Address of a symbol; throws LibraryError if the library has none of this name.
    void* symbol(const char* name) const;

    /// Stores the address of function `name` in `function`, whose type says how it is called.
    template <typename Function>
    void resolve(const char* name, Function*& function) const {
        function = reinterpret_cast<Function*>(symbol(name));
    }

    const std::filesystem::path& file() const { return file_; }

private:
    SharedLibrary(std::filesystem::path file, void* handle);

    std::filesystem::path file_;
    void* handle_ = nullptr;
};

}  // namespace quillon::client
