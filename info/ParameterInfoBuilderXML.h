#pragma once

#include <string>
#include <string_view>

#include "info/Category.h"
#include "info/ParameterInfo.h"

namespace quillon {

/// How an applet calls itself. The document shows vendor and name; its own version is that of its schema.
struct AppletNames {
    std::string vendor;
    std::string name;
    std::string version;
};

/// Renders a list of the store as a GenApi register description, version 1.0, in which every parameter is a register on
/// the port "DevicePort". The document shows the ranges and access flags of the moment; bytes above 0x7F are copied as
/// they are.
///
/// Rendered are UInt, Int, Double, String and Enum records that are exported and not direct accesses to registers.
/// Every parent group with such a record becomes a category.
class ParameterInfoBuilderXML {
public:
    /// `store` must outlive the builder. The applet's name becomes the model's; `port` is the index of the list.
    ParameterInfoBuilderXML(const Fg_ParameterInfo& store, const AppletNames& applet, int port);
    virtual ~ParameterInfoBuilderXML() = default;
    ParameterInfoBuilderXML(const ParameterInfoBuilderXML&) = delete;
    ParameterInfoBuilderXML& operator=(const ParameterInfoBuilderXML&) = delete;

    /// The document. To be called once: a second run files every feature a second time.
    std::string build();

private:
    void writeHead(std::string& out) const;
    void processRegisterInfo(std::string& out, const RegisterInfo* first, const RegisterInfo* parent);
    void buildParamDescr(std::string& out, const RegisterInfo& info, const RegisterInfo* parent);
    void writeCategory(std::string& out, const Category& category) const;
    Category& categoryFor(std::string_view parentLabel);

    const Fg_ParameterInfo& info_;
    std::string modelName_;
    std::string vendorName_;
    int port_;
    Category root_;
};

}  // namespace quillon
