/// @file
/// The applet as a device of Aravis, a GenApi consumer that knows nothing of it: a device is a GObject whose register
/// reads and writes become gets and sets of the applet, with the register's address as parameter id.
#pragma once

#include <arv.h>

#include "quillon/client/Applet.h"

namespace quillon::genapi {

/// A device on an open applet, which has to outlive it. The description is what the applet tells now; a later change of
/// a limit is seen by a device made later. To be released with g_object_unref.
///
/// A register's length has to be the width of the parameter: 4 bytes for an integer, 8 for a double, any for a text. A
/// get or set that the applet refuses arrives as an error of appletErrorDomain() with the applet's code.
ArvDevice* newAppletDevice(client::Applet& applet);

GQuark appletErrorDomain();

}  // namespace quillon::genapi
