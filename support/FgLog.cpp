#include "support/FgLog.h"

#include <array>
#include <cstdarg>
#include <ctime>
#include <string>

namespace quillon {

namespace {
constexpr const char* Rule = "-------------------------------------------------------------------------\n";
static_assert(std::char_traits<char>::length(Rule) == 74, "73 hyphens and the line feed");
}  // namespace

Fg_Log::Fg_Log(const char* file) {
    OpenLogFile(file);
}

Fg_Log::~Fg_Log() {
    CloseLogFile();
}

void Fg_Log::OpenLogFile(const char* /*file*/) {}

void Fg_Log::CloseLogFile() {
    if (file_ == nullptr) {
        return;
    }
    std::fflush(file_);
    std::fclose(file_);
    file_ = nullptr;
}

void Fg_Log::WriteWelcome() {
    if (file_ == nullptr) {
        return;
    }
    std::fputs(Rule, file_);
    std::fputs("Copyright (c) Veltrix. All rights reserved.\n", file_);
    std::fputs("Contents: Log details for lumaframe Dll\n", file_);
    std::fputs(GetTimestamp(), file_);
    std::fputs(Rule, file_);
    std::fflush(file_);
}

const char* Fg_Log::GetTimestamp() {
    const std::time_t now = std::time(nullptr);
    static thread_local std::array<char, 26> text;
    std::tm local{};
    localtime_r(&now, &local);
    return asctime_r(&local, text.data());
}

void Fg_Log::Func(const char* /*name*/) {}

void Fg_Log::UsrDbg(const char* format, ...) {
    if (file_ == nullptr) {
        return;
    }
    std::va_list arguments;
    va_start(arguments, format);
    std::vfprintf(file_, format, arguments);
    va_end(arguments);
}

void Fg_Log::Info(const char* /*text*/) {}

void Fg_Log::Info(const char* text, int value) {
    if (file_ != nullptr) {
        std::fprintf(file_, "lumaframeIV::Info >> %s >> %d;\n", text, value);
        std::fflush(file_);
    }
}

void Fg_Log::Error(const char* text) {
    if (file_ != nullptr) {
        std::fprintf(file_, "lumaframeIV::Error >> %s;\n", text);
        std::fflush(file_);
    }
}

void Fg_Log::ErrorInt(const char* place, const char* text, int value) {
    if (file_ != nullptr) {
        std::fprintf(file_, "lumaframeIV::Error >> %s >> %s >> %d;\n", place, text, value);
        std::fflush(file_);
    }
}

void Fg_Log::ErrorDouble(const char* place, const char* text, double value) {
    if (file_ != nullptr) {
        std::array<char, 32> number{};
        std::snprintf(number.data(), number.size(), "%.*g", 12, value);
        std::fprintf(file_, "lumaframeIV::Error >> %s >> %s >> %s;\n", place, text, number.data());
        std::fflush(file_);
    }
}

}  // namespace quillon
