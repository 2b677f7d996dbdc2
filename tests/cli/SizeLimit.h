#pragma once

#include <sys/resource.h>

#include <csignal>

namespace quillon::cli::testing {

/// Lets no file grow beyond a size, as a full disk does.
class SizeLimit {
public:
    explicit SizeLimit(rlim_t most) : signal_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &former_);
        const rlimit limit{most, former_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    SizeLimit(const SizeLimit&) = delete;
    SizeLimit& operator=(const SizeLimit&) = delete;
    ~SizeLimit() {
        setrlimit(RLIMIT_FSIZE, &former_);
        std::signal(SIGXFSZ, signal_);
    }

private:
    rlimit former_{};
    void (*signal_)(int);
};

}  // namespace quillon::cli::testing
