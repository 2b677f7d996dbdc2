#pragma once

#include <initializer_list>
#include <nlohmann/json.hpp>
#include <string>

namespace quillon::cli {

struct Console;
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
/// Prints an answer with a line end: indented, or as one line where the console asks for that.
void printJson(Console& console, const Json& json);

}  // namespace quillon::cli
