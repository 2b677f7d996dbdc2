#include "tests/genapi/AppletDevice.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "quillon/PublicParameters.h"

namespace quillon::genapi {

namespace {

/// GObject allocates it filled with zeros, and calls no constructors.
struct AppletDevice {
    ArvDevice parent;
    client::Applet* applet;  // borrowed
    std::string* xml;        // owned
    ArvGc* description;      // owned
};

struct AppletDeviceClass {
    ArvDeviceClass parent;
};

ArvDeviceClass* parentClass = nullptr;

AppletDevice& self(ArvDevice* device) {
    return *reinterpret_cast<AppletDevice*>(device);
}

bool refuse(GError** error, int code, const std::string& what) {
    g_set_error(error, appletErrorDomain(), code, "%s refused with %d", what.c_str(), code);
    return false;
}

/// A register that no parameter stands behind, or that has not the parameter's width: a fault of the description.
bool mistake(GError** error, const std::string& what) {
    g_set_error(error, ARV_DEVICE_ERROR, ARV_DEVICE_ERROR_INVALID_PARAMETER, "%s", what.c_str());
    return false;
}

std::string registerText(guint64 address, guint32 size) {
    return "register " + std::to_string(address) + " of " + std::to_string(size) + " bytes";
}

constexpr FgParamTypes NoType{0};

/// The type to pass the value of a number with; NoType if a register of this length can't hold it.
FgParamTypes numberType(const PublicParameter& parameter, guint32 size) {
    if (parameter.kind == ParameterKind::Double) {
        return size == sizeof(double) ? FgTypeDouble : NoType;
    }
    const bool isInteger = parameter.kind == ParameterKind::Int || parameter.kind == ParameterKind::Forwarded;
    return isInteger && size == sizeof(std::uint32_t) ? FgTypeUInt32 : NoType;
}

bool readText(client::Applet& applet, int id, guint32 size, void* buffer, GError** error) {
    std::string text;
    if (const int code = applet.getText(id, text); code != 0) {
        return refuse(error, code, "a get of " + std::to_string(id));
    }
    std::memcpy(buffer, text.data(), std::min<std::size_t>(text.size(), size));
    return true;
}

gboolean readMemory(ArvDevice* device, guint64 address, guint32 size, void* buffer, GError** error) {
    client::Applet& applet = *self(device).applet;
    const int id = static_cast<int>(address);
    const PublicParameter* parameter = findPublicParameter(id);
    std::memset(buffer, 0, size);
    if (parameter != nullptr && parameter->kind == ParameterKind::String) {
        return readText(applet, id, size, buffer, error);
    }
    const FgParamTypes type = parameter != nullptr ? numberType(*parameter, size) : NoType;
    if (type == 0) {
        return mistake(error, "no " + registerText(address, size));
    }
    const int code = applet.getWithType(id, buffer, 0, type);
    return code == 0 || refuse(error, code, "a get of " + std::to_string(id));
}

gboolean writeMemory(ArvDevice* device, guint64 address, guint32 size, void* buffer, GError** error) {
    client::Applet& applet = *self(device).applet;
    const int id = static_cast<int>(address);
    const PublicParameter* parameter = findPublicParameter(id);
    int code = 0;
    if (parameter != nullptr && parameter->kind == ParameterKind::String) {
        const char* text = static_cast<const char*>(buffer);
        code = applet.setText(id, std::string(text, ::strnlen(text, size)));  // a full register has no terminating zero
    } else {
        const FgParamTypes type = parameter != nullptr ? numberType(*parameter, size) : NoType;
        if (type == 0) {
            return mistake(error, "no " + registerText(address, size));
        }
        code = applet.setWithType(id, buffer, 0, type);
    }
    return code == 0 || refuse(error, code, "a set of " + std::to_string(id));
}

gboolean readRegister(ArvDevice* device, guint64 address, guint32* value, GError** error) {
    return readMemory(device, address, sizeof *value, value, error);
}

gboolean writeRegister(ArvDevice* device, guint64 address, guint32 value, GError** error) {
    return writeMemory(device, address, sizeof value, &value, error);
}

const char* xmlOf(ArvDevice* device, std::size_t* size) {
    *size = self(device).xml->size();
    return self(device).xml->c_str();
}

ArvGc* descriptionOf(ArvDevice* device) {
    return self(device).description;
}

void finalize(GObject* object) {
    AppletDevice& device = *reinterpret_cast<AppletDevice*>(object);
    g_clear_object(&device.description);
    delete device.xml;
    G_OBJECT_CLASS(parentClass)->finalize(object);
}

void initializeClass(void* classPointer, void* /*data*/) {
    auto& deviceClass = static_cast<AppletDeviceClass*>(classPointer)->parent;
    parentClass = static_cast<ArvDeviceClass*>(g_type_class_peek_parent(classPointer));
    deviceClass.parent_class.finalize = finalize;
    deviceClass.get_genicam_xml = xmlOf;
    deviceClass.get_genicam = descriptionOf;
    deviceClass.read_memory = readMemory;
    deviceClass.write_memory = writeMemory;
    deviceClass.read_register = readRegister;
    deviceClass.write_register = writeRegister;
}

GType deviceType() {
    static const GType type =
        g_type_register_static_simple(ARV_TYPE_DEVICE, "QuillonAppletDevice", sizeof(AppletDeviceClass),
                                      initializeClass, sizeof(AppletDevice), nullptr, GTypeFlags{});
    return type;
}

}  // namespace

ArvDevice* newAppletDevice(client::Applet& applet) {
    auto* device = static_cast<ArvDevice*>(g_object_new(deviceType(), nullptr));
    self(device).applet = &applet;
    self(device).xml = new std::string(applet.xml());
    self(device).description = arv_gc_new(device, self(device).xml->data(), self(device).xml->size());
    return device;
}

GQuark appletErrorDomain() {
    return g_quark_from_static_string("quillon-applet-error");
}

}  // namespace quillon::genapi
