#include "cli/Json.h"

#include <utility>

#include "cli/Encoding.h"
#include "cli/Verb.h"

namespace quillon::cli {

namespace {

/// The same with all texts in UTF-8, as JSON wants them.
Json encoded(const Json& json) {
    if (json.is_string()) {
        return asUtf8(json.get_ref<const std::string&>());
    }
    if (json.is_array()) {
        Json list = Json::array();
        for (const Json& element : json) {
            list.push_back(encoded(element));
        }
        return list;
    }
    if (json.is_object()) {
        Json members = Json::object();
        for (const auto& member : json.items()) {
            members[asUtf8(member.key())] = encoded(member.value());
        }
        return members;
    }
    return json;
}

}  // namespace

Json object(std::initializer_list<Member> members) {
    Json json = Json::object();
    for (const Member& member : members) {
        put(json, member.name, member.value);
    }
    return json;
}

void put(Json& object, const std::string& name, Json value) {
    object[name] = std::move(value);
}

Json emptyList() {
    return Json::array();
}

void append(Json& list, Json element) {
    list.push_back(std::move(element));
}

std::string inOneLine(const Json& json) {
    return encoded(json).dump();
}

void printJson(Console& console, const Json& json) {
    console.hasAnswered = true;
    console.out << (console.jsonPerLine ? inOneLine(json) : encoded(json).dump(2)) << '\n';
}

}  // namespace quillon::cli
