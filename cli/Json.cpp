#include "cli/Json.h"

#include <utility>

namespace quillon::cli {

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
    return json.dump();
}

void printJson(std::ostream& out, const Json& json) {
    out << json.dump(2) << '\n';
}

}  // namespace quillon::cli
