/// @file
/// The settings of the image path, as the design's parameters have them now.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "softboard/pixels/Settings.h"
#include "softboard/src/BoundParameters.h"

namespace softboard {

/// Not locked; the board's lock guards it. Parameters that a design lacks count with the value that changes nothing.
class PixelSettings {
public:
    /// Takes up a design. Versions go on.
    void bind(const Find& find);

    /// To be told of every change of a watched parameter.
    void written(const Parameter& parameter);
    void setRedFirst(bool redFirst);
    void setScene(std::shared_ptr<pixels::Scene> scene);
    /// To be told which source is connected.
    void setSimulator(bool simulator);

    /// The settings of this moment; a new version if anything has changed.
    const std::shared_ptr<const pixels::Settings>& current();
    /// A version of its own of these settings, with what `change` does to it.
    template <class Change>
    std::shared_ptr<const pixels::Settings> derive(Change change) {
        auto settings = std::make_shared<pixels::Settings>(*current());
        settings->version = ++version_;
        change(*settings);
        return settings;
    }

private:
    struct BoundTable {
        const Parameter* parameter = nullptr;
        std::shared_ptr<const pixels::Table> content;
        bool stale = true;
    };

    const Parameter* depend(const Find& find, const std::string& name);
    std::uint32_t formatBits() const;
    void take();

    std::vector<const Parameter*> dependencies_;
    const Parameter* pixelFormat_ = nullptr;
    std::array<const Parameter*, pixels::Colours> order_{};
    const Parameter* enableX_ = nullptr;
    const Parameter* yDivisor_ = nullptr;
    const Parameter* frameDivisor_ = nullptr;
    const Parameter* offset_ = nullptr;
    const Parameter* sensorWidth_ = nullptr;
    const Parameter* xMirror_ = nullptr;
    const Parameter* yMirror_ = nullptr;
    const Parameter* xOffset_ = nullptr;
    const Parameter* xLength_ = nullptr;
    std::array<const Parameter*, pixels::Colours> coefficient_{};
    const Parameter* lookup_ = nullptr;
    std::array<BoundTable, pixels::Colours> tables_;
    const Parameter* shift_ = nullptr;
    const Parameter* format_ = nullptr;
    /// What a value of the format selects: bits of a component, and the trash that can swallow it.
    struct Branch {
        std::uint32_t bits = 0;
        const Parameter* trash = nullptr;
    };
    std::vector<Branch> branches_;

    std::shared_ptr<pixels::Scene> scene_;
    bool simulator_ = false;
    bool redFirst_ = false;
    bool stale_ = true;
    std::uint32_t version_ = 0;
    std::shared_ptr<const pixels::Settings> current_;
};

}  // namespace softboard
