#pragma once

#include <string>
#include <string_view>

#include "quillon/client/Export.h"

namespace quillon::client {

/// A parameter as a caller names it: by its id, as FG_WIDTH, or by its name, as "FG_WIDTH". Made on the way into a
/// call, which it must not outlive where it was made of a name.
class QUILLON_CLIENT_API ParameterName {
public:
    ParameterName(int id) : id_(id) {}
    ParameterName(const char* name) : name_(name) {}
    ParameterName(std::string_view name) : name_(name) {}
    ParameterName(const std::string& name) : name_(name) {}

    bool isId() const { return name_.data() == nullptr; }
    int id() const { return id_; }                   ///< where it is an id
    std::string_view name() const { return name_; }  ///< where it is a name

private:
    int id_ = 0;
    std::string_view name_;
};

}  // namespace quillon::client
