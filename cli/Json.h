#pragma once

#include <initializer_list>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string>

namespace quillon::cli {

using Json = nlohmann::ordered_json;

// The library's own ways to build a value are templates, which cost every file that uses them a second or more to
// compile; these are compiled once.

/// A member of an object.
struct Member {
    const char* name;
    Json value;
};

/// An object with these members, in order.
Json object(std::initializer_list<Member> members);
/// Adds a member, or replaces its value. A null becomes an object.
void put(Json& object, const std::string& name, Json value);

Json emptyList();
void append(Json& list, Json element);

/// Texts may have any bytes: asUtf8() sees to them when they are printed.
std::string inOneLine(const Json& json);
/// Prints an answer, indented, with a line end.
void printJson(std::ostream& out, const Json& json);

}  // namespace quillon::cli
