#include "tests/genapi/Consumer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>

#include "tests/genapi/AppletDevice.h"

namespace quillon::genapi {

namespace {

Outcome outcomeOf(GError* error) {
    if (error == nullptr) {
        return Done;
    }
    const bool byApplet = error->domain == appletErrorDomain();
    const Outcome outcome{byApplet ? Outcome::By::Applet : Outcome::By::Consumer, error->code, error->message};
    g_error_free(error);
    return outcome;
}

/// Calls an operation of the consumer with an error pointer behind `arguments`.
template <typename Operation, typename... Arguments>
Outcome attempt(Operation operation, Arguments... arguments) {
    GError* error = nullptr;
    operation(arguments..., &error);
    return outcomeOf(error);
}

/// The same with a result; `value` stays as it is if the operation fails.
template <typename Value, typename Operation, typename... Arguments>
Outcome attemptInto(Value& value, Operation operation, Arguments... arguments) {
    GError* error = nullptr;
    const auto result = operation(arguments..., &error);
    if (error == nullptr) {
        value = result;
    }
    return outcomeOf(error);
}

/// A property of the description, which can't be refused.
template <typename Value, typename Operation, typename... Arguments>
Value property(Operation operation, Arguments... arguments) {
    Value value{};
    const Outcome outcome = attemptInto(value, operation, arguments...);
    EXPECT_EQ(outcome, Done) << outcome.message;
    return value;
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const Outcome& outcome) {
    constexpr const char* names[] = {"done", "refused by the applet", "refused by the consumer"};
    return out << names[static_cast<int>(outcome.refusedBy)] << " (" << outcome.code << ")";
}

std::ostream& operator<<(std::ostream& out, NodeClass nodeClass) {
    constexpr const char* names[] = {"Missing", "Category", "Integer", "Float", "String", "Enumeration", "Other"};
    return out << names[static_cast<int>(nodeClass)];
}

Consumer::Consumer(client::Applet& applet)
    : device_(newAppletDevice(applet)), description_(arv_device_get_genicam(device_.get())) {
    EXPECT_NE(description_, nullptr) << "the document cannot be parsed";
}

void Consumer::checkRanges() {
    arv_gc_set_range_check_policy(description_, ARV_RANGE_CHECK_POLICY_ENABLE);
}

void Consumer::checkAccess() {
    arv_gc_set_access_check_policy(description_, ARV_ACCESS_CHECK_POLICY_ENABLE);
}

NodeClass Consumer::classOf(const std::string& name) const {
    ArvGcNode* found = node(name);
    return found == nullptr                ? NodeClass::Missing
           : ARV_IS_GC_CATEGORY(found)     ? NodeClass::Category
           : ARV_IS_GC_ENUMERATION(found)  ? NodeClass::Enumeration  // also an integer
           : ARV_IS_GC_INTEGER_NODE(found) ? NodeClass::Integer
           : ARV_IS_GC_FLOAT_NODE(found)   ? NodeClass::Float
           : ARV_IS_GC_STRING(found)       ? NodeClass::String
                                           : NodeClass::Other;
}

std::vector<std::string> Consumer::featuresOf(const std::string& category) const {
    std::vector<std::string> names;
    if (classOf(category) != NodeClass::Category) {
        ADD_FAILURE() << category << " is no category";
        return names;
    }
    for (const GSList* item = arv_gc_category_get_features(ARV_GC_CATEGORY(node(category))); item != nullptr;
         item = item->next) {
        names.emplace_back(static_cast<const char*>(item->data));
    }
    return names;
}

std::string Consumer::descriptionOf(const std::string& name) const {
    const char* text = arv_gc_feature_node_get_description(ARV_GC_FEATURE_NODE(node(name)));
    return text != nullptr ? text : "";
}

ArvGcAccessMode Consumer::accessOf(const std::string& name) const {
    return arv_gc_feature_node_get_actual_access_mode(ARV_GC_FEATURE_NODE(node(name)));
}

std::int64_t Consumer::integerMin(const std::string& name) const {
    return property<std::int64_t>(arv_gc_integer_get_min, ARV_GC_INTEGER(node(name)));
}

std::int64_t Consumer::integerMax(const std::string& name) const {
    return property<std::int64_t>(arv_gc_integer_get_max, ARV_GC_INTEGER(node(name)));
}

std::int64_t Consumer::integerStep(const std::string& name) const {
    return property<std::int64_t>(arv_gc_integer_get_inc, ARV_GC_INTEGER(node(name)));
}

double Consumer::floatMin(const std::string& name) const {
    return property<double>(arv_gc_float_get_min, ARV_GC_FLOAT(node(name)));
}

double Consumer::floatMax(const std::string& name) const {
    return property<double>(arv_gc_float_get_max, ARV_GC_FLOAT(node(name)));
}

std::vector<std::pair<std::string, std::int64_t>> Consumer::entriesOf(const std::string& name) const {
    std::vector<std::pair<std::string, std::int64_t>> entries;
    for (const GSList* item = arv_gc_enumeration_get_entries(ARV_GC_ENUMERATION(node(name))); item != nullptr;
         item = item->next) {
        auto* entry = ARV_GC_ENUM_ENTRY(item->data);
        entries.emplace_back(arv_gc_feature_node_get_name(ARV_GC_FEATURE_NODE(entry)),
                             property<std::int64_t>(arv_gc_enum_entry_get_value, entry));
    }
    std::ranges::reverse(entries);  // the consumer keeps them from the last to the first
    return entries;
}

Outcome Consumer::readInteger(const std::string& name, std::int64_t& value) {
    return attemptInto(value, arv_gc_integer_get_value, ARV_GC_INTEGER(node(name)));
}

Outcome Consumer::readFloat(const std::string& name, double& value) {
    return attemptInto(value, arv_gc_float_get_value, ARV_GC_FLOAT(node(name)));
}

Outcome Consumer::readString(const std::string& name, std::string& value) {
    return attemptInto(value, arv_gc_string_get_value, ARV_GC_STRING(node(name)));
}

Outcome Consumer::readEnumeration(const std::string& name, std::int64_t& value) {
    return attemptInto(value, arv_gc_enumeration_get_int_value, ARV_GC_ENUMERATION(node(name)));
}

Outcome Consumer::readEntry(const std::string& name, std::optional<std::string>& entry) {
    const char* text = nullptr;
    const Outcome outcome = attemptInto(text, arv_gc_enumeration_get_string_value, ARV_GC_ENUMERATION(node(name)));
    entry = text != nullptr ? std::optional<std::string>(text) : std::nullopt;
    return outcome;
}

Outcome Consumer::writeInteger(const std::string& name, std::int64_t value) {
    return attempt(arv_gc_integer_set_value, ARV_GC_INTEGER(node(name)), value);
}

Outcome Consumer::writeFloat(const std::string& name, double value) {
    return attempt(arv_gc_float_set_value, ARV_GC_FLOAT(node(name)), value);
}

Outcome Consumer::writeString(const std::string& name, const std::string& value) {
    return attempt(arv_gc_string_set_value, ARV_GC_STRING(node(name)), value.c_str());
}

Outcome Consumer::writeEnumeration(const std::string& name, std::int64_t value) {
    return attempt(arv_gc_enumeration_set_int_value, ARV_GC_ENUMERATION(node(name)), value);
}

Outcome Consumer::writeEntry(const std::string& name, const std::string& entry) {
    return attempt(arv_gc_enumeration_set_string_value, ARV_GC_ENUMERATION(node(name)), entry.c_str());
}

}  // namespace quillon::genapi
