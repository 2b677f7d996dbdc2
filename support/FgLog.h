#pragma once

#include <cstdio>

namespace quillon {

/// A log file of the older kind. It stands ready but is never opened: OpenLogFile does nothing, and without a file
/// every operation is silent.
class Fg_Log {
public:
    explicit Fg_Log(const char* file);
    Fg_Log(const Fg_Log&) = delete;
    Fg_Log& operator=(const Fg_Log&) = delete;
    ~Fg_Log();

    void OpenLogFile(const char* file);
    void CloseLogFile();
    void WriteWelcome();
    /// The local time as asctime prints it: 24 characters and a line feed.
    static const char* GetTimestamp();
    void Func(const char* name);
    void UsrDbg(const char* format, ...) __attribute__((format(printf, 2, 3)));
    void Info(const char* text);
    void Info(const char* text, int value);
    void Error(const char* text);
    void ErrorInt(const char* place, const char* text, int value);
    void ErrorDouble(const char* place, const char* text, double value);

    /// Writes to `file` from now on and closes it in the end; null closes nothing and silences.
    void attach(std::FILE* file) { file_ = file; }

private:
    std::FILE* file_ = nullptr;
};

}  // namespace quillon
