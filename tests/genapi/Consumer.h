/// @file
/// A GenApi consumer that has parsed the applet's description, with its features by name.
#pragma once

#include <arv.h>

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "quillon/client/Applet.h"

namespace quillon::genapi {

/// How a read or write through the consumer ended.
struct Outcome {
    enum class By { Nobody, Applet, Consumer };
    By refusedBy = By::Nobody;
    int code = 0;  ///< the applet's own code, or the consumer's ArvGcError
    std::string message;

    bool operator==(const Outcome& other) const { return refusedBy == other.refusedBy && code == other.code; }
};

inline const Outcome Done{};
inline Outcome refusedByApplet(int code) {
    return {Outcome::By::Applet, code, {}};
}
inline Outcome refusedByConsumer(ArvGcError code) {
    return {Outcome::By::Consumer, static_cast<int>(code), {}};
}
std::ostream& operator<<(std::ostream& out, const Outcome& outcome);

enum class NodeClass { Missing, Category, Integer, Float, String, Enumeration, Other };
std::ostream& operator<<(std::ostream& out, NodeClass nodeClass);

/// Parses the description that the applet tells at this moment. Every read and write goes to the applet; nothing is
/// cached. Names have to be those of nodes of the fitting class, but for classOf() and featuresOf().
class Consumer {
public:
    /// The applet has to outlive the consumer.
    explicit Consumer(client::Applet& applet);
    /// Lets the consumer test values and access modes by itself, before the applet is asked. As made, it does not.
    void checkRanges();
    void checkAccess();

    NodeClass classOf(const std::string& name) const;
    /// What a category lists, in its order; only names behind which there is a node.
    std::vector<std::string> featuresOf(const std::string& category) const;
    std::string descriptionOf(const std::string& name) const;
    ArvGcAccessMode accessOf(const std::string& name) const;

    std::int64_t integerMin(const std::string& name) const;
    std::int64_t integerMax(const std::string& name) const;
    std::int64_t integerStep(const std::string& name) const;
    double floatMin(const std::string& name) const;
    double floatMax(const std::string& name) const;
    /// The names and values of an enumeration, in the document's order.
    std::vector<std::pair<std::string, std::int64_t>> entriesOf(const std::string& name) const;

    Outcome readInteger(const std::string& name, std::int64_t& value);
    Outcome readFloat(const std::string& name, double& value);
    Outcome readString(const std::string& name, std::string& value);
    /// The number in the register of an enumeration, and the name of the entry that has it; nothing if none has.
    Outcome readEnumeration(const std::string& name, std::int64_t& value);
    Outcome readEntry(const std::string& name, std::optional<std::string>& entry);

    Outcome writeInteger(const std::string& name, std::int64_t value);
    Outcome writeFloat(const std::string& name, double value);
    Outcome writeString(const std::string& name, const std::string& value);
    Outcome writeEnumeration(const std::string& name, std::int64_t value);
    Outcome writeEntry(const std::string& name, const std::string& entry);

private:
    struct Unref {
        void operator()(ArvDevice* device) const { g_object_unref(device); }
    };
    ArvGcNode* node(const std::string& name) const { return arv_gc_get_node(description_, name.c_str()); }

    std::unique_ptr<ArvDevice, Unref> device_;
    ArvGc* description_;  // the device's
};

}  // namespace quillon::genapi
