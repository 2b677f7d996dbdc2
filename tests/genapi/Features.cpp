#include "tests/genapi/Features.h"

#include <variant>

#include "info/XmlFilter.h"

namespace quillon::genapi {

namespace {

struct ClassOfValues {
    NodeClass operator()(const UIntRange&) const { return NodeClass::Integer; }
    NodeClass operator()(const IntRange&) const { return NodeClass::Integer; }
    NodeClass operator()(const DoubleRange&) const { return NodeClass::Float; }
    NodeClass operator()(const InitialText&) const { return NodeClass::String; }
    NodeClass operator()(const Enumeration&) const { return NodeClass::Enumeration; }
    NodeClass operator()(const UInt64Range&) const { return NodeClass::Missing; }
    NodeClass operator()(const Int64Range&) const { return NodeClass::Missing; }
    NodeClass operator()(const UIntFieldRange&) const { return NodeClass::Missing; }
};

Feature featureOf(const CatalogueParameter& parameter) {
    const CatalogueGroupRow& group = catalogueGroups()[static_cast<std::size_t>(parameter.group)];
    return {parameter.symbol, xmlNameFilter(group.label), std::visit(ClassOfValues(), parameter.values),
            (parameter.accessFlags & 2) != 0, &parameter};
}

}  // namespace

const std::vector<Feature>& features() {
    static const std::vector<Feature> all = [] {
        std::vector<Feature> made;
        for (const CatalogueParameter& parameter : catalogueParameters()) {
            Feature feature = featureOf(parameter);
            if (feature.nodeClass != NodeClass::Missing) {
                made.push_back(std::move(feature));
            }
        }
        return made;
    }();
    return all;
}

std::vector<std::string> parametersWithoutFeature() {
    std::vector<std::string> names;
    for (const CatalogueParameter& parameter : catalogueParameters()) {
        if (featureOf(parameter).nodeClass == NodeClass::Missing) {
            names.emplace_back(parameter.symbol);
        }
    }
    return names;
}

}  // namespace quillon::genapi
