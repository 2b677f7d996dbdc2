/// @file
/// What the software board's SDK header says, as numbers: its names are those of the applet's header, so that no source
/// can include both.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

/// Sizes of the result and of the arguments behind the handle.
using Shape = std::vector<std::size_t>;

template <typename Function>
struct ShapeOf;

template <typename Result, typename HandleType, typename... Arguments>
struct ShapeOf<Result(HandleType, Arguments...)> {
    static Shape get() { return {sizeof(Result), sizeof(Arguments)...}; }
};

template <typename Function>
Shape shapeOf() {
    return ShapeOf<Function>::get();
}

std::map<std::string, int> sdkValueTypes();
/// Sizes of the records of table entries, and where their fields begin.
std::map<std::string, std::size_t> sdkFieldRecords();
/// The functions that an applet forwards to.
std::map<std::string, Shape> sdkFunctions();
