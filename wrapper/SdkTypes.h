/// @file
/// The types that cross the border between the applet and the closed libraries.
#pragma once

struct Fg_Struct_s;    ///< a grabber handle of the SDK
struct IXdevice;       ///< a board; belongs to the caller of Std_entry
struct fpga_design;    ///< a loaded design
struct ShadingMaster;  ///< a shading handle; this applet has none
