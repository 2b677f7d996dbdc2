/// @file
/// The log dispatcher: hands out loggers by name, writes messages, and tells its clients about levels.

#include "softboard/dispatcher.h"

#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace {

using Handle = std::uint64_t;
using OnDetach = void (*)();
using OnSetLevel = void (*)(Handle, int);
using GetLogger = void (*)(const char*, Handle*, int*);
using Write = void (*)(Handle, int, const char*, int, void*);

constexpr int Silent = 7;

struct Client {
    const void* context;
    OnDetach onDetach;
    OnSetLevel onSetLevel;
};

struct Logger {
    std::string name;
    int level;
};

struct Dispatcher {
    std::mutex mutex;
    std::vector<Client> clients;
    std::vector<Logger> loggers;             ///< a logger's handle is its position + 1
    std::map<std::string, int> levelByName;  ///< levels set for loggers that nobody has asked for yet
    int startLevel = Silent;
    dispatcher_sink sink = nullptr;
    std::FILE* file = stderr;

    Dispatcher() {
        if (const char* const level = std::getenv("ORLO_LOG_LEVEL")) {
            std::from_chars(level, level + std::strlen(level), startLevel);  // anything else leaves it silent
        }
        const char* const name = std::getenv("ORLO_LOG_FILE");
        std::FILE* const named = name != nullptr && *name != '\0' ? std::fopen(name, "a") : nullptr;
        if (named != nullptr) {
            file = named;
        }
    }
};

/// Never destroyed: messages may come from late destructors.
Dispatcher& dispatcher() {
    static Dispatcher* const instance = new Dispatcher;
    return *instance;
}

void getLogger(const char* name, Handle* handle, int* level) {
    if (name == nullptr || handle == nullptr || level == nullptr) {
        return;
    }
    Dispatcher& self = dispatcher();
    const std::lock_guard guard(self.mutex);
    for (std::size_t position = 0; position < self.loggers.size(); ++position) {
        if (self.loggers[position].name == name) {
            *handle = position + 1;
            *level = self.loggers[position].level;
            return;
        }
    }
    const auto set = self.levelByName.find(name);
    self.loggers.push_back({name, set != self.levelByName.end() ? set->second : self.startLevel});
    *handle = self.loggers.size();
    *level = self.loggers.back().level;
}

void write(Handle handle, int level, const char* text, int, void*) {
    Dispatcher& self = dispatcher();
    std::unique_lock lock(self.mutex);
    const char* const shown = text != nullptr ? text : "";
    const std::string name = handle >= 1 && handle <= self.loggers.size() ? self.loggers[handle - 1].name : "?";
    if (const dispatcher_sink sink = self.sink) {
        lock.unlock();  // a sink may call the dispatcher
        sink(name.c_str(), level, shown);
        return;
    }
    std::fprintf(self.file, "%d %s %s\n", level, name.c_str(), shown);
    std::fflush(self.file);
}

void attach(const void* context, OnDetach onDetach, OnSetLevel onSetLevel, GetLogger* getLoggerFunction,
            Write* writeFunction) {
    Dispatcher& self = dispatcher();
    const std::lock_guard guard(self.mutex);
    self.clients.push_back({context, onDetach, onSetLevel});
    if (getLoggerFunction != nullptr) {
        *getLoggerFunction = getLogger;
    }
    if (writeFunction != nullptr) {
        *writeFunction = write;
    }
}

void detach(const void* context) {
    Dispatcher& self = dispatcher();
    const std::lock_guard guard(self.mutex);
    std::erase_if(self.clients, [&](const Client& client) { return client.context == context; });
}

struct Descriptor {
    void (*attach)(const void*, OnDetach, OnSetLevel, GetLogger*, Write*);
    void (*detach)(const void*);
};

}  // namespace

extern "C" {
/// The table through which clients come and go.
SOFTBOARD_API extern const Descriptor logging_dispatcher_descriptor;
const Descriptor logging_dispatcher_descriptor = {attach, detach};
}

void dispatcher_set_level(const char* logger, int level) {
    Dispatcher& self = dispatcher();
    std::vector<Client> clients;
    std::vector<Handle> handles;
    {
        const std::lock_guard guard(self.mutex);
        for (std::size_t position = 0; position < self.loggers.size(); ++position) {
            if (logger == nullptr || self.loggers[position].name == logger) {
                self.loggers[position].level = level;
                handles.push_back(position + 1);
            }
        }
        if (logger == nullptr) {
            self.startLevel = level;
            self.levelByName.clear();
        } else {
            self.levelByName[logger] = level;
        }
        clients = self.clients;
    }
    // Without the lock: a client may ask for a logger from its callback.
    for (const Client& client : clients) {
        for (const Handle handle : handles) {
            if (client.onSetLevel != nullptr) {
                client.onSetLevel(handle, level);
            }
        }
    }
}

void dispatcher_set_sink(dispatcher_sink sink) {
    Dispatcher& self = dispatcher();
    const std::lock_guard guard(self.mutex);
    self.sink = sink;
}

void dispatcher_detach_all(void) {
    Dispatcher& self = dispatcher();
    std::vector<Client> clients;
    {
        const std::lock_guard guard(self.mutex);
        clients.swap(self.clients);
    }
    for (const Client& client : clients) {
        if (client.onDetach != nullptr) {
            client.onDetach();
        }
    }
}

int dispatcher_client_count(void) {
    Dispatcher& self = dispatcher();
    const std::lock_guard guard(self.mutex);
    return static_cast<int>(self.clients.size());
}
