#include "cli/Provenance.h"

#include "cli/Refusals.h"
#include "cli/Values.h"

namespace quillon::cli {

namespace {

std::string valueOf(client::Applet& applet, const std::string& name) {
    const Parameter parameter = findParameter(applet, name);
    Value value;
    const int code = readValue(applet, parameter, value);
    return code == 0 ? inWords(parameter, value) : inWords(explainGet(code));
}

}  // namespace

std::vector<std::string> provenance(Session& session, const std::vector<std::string>& names) {
    client::Applet& applet = session.applet();
    Options options = session.options();
    options.load = session.configuration();
    options.save.reset();
    Session other(options);
    std::string configuration =
        "Configuration: " + (options.load ? options.load->string() : std::string("start-up values"));
    std::string values;
    std::string separator = ", with another ";
    for (const std::string& name : names) {
        const std::string value = valueOf(applet, name);
        if (value != valueOf(other.applet(), name)) {
            configuration += separator + name;
            separator = ", ";
        }
        values += (values.empty() ? "" : ", ") + name + " = " + value;
    }
    return {configuration, values};
}

}  // namespace quillon::cli
