/// @file
/// Marks what the software board's libraries show to the outside; everything else in them is hidden.
#ifndef SOFTBOARD_EXPORT_H
#define SOFTBOARD_EXPORT_H

#define SOFTBOARD_API __attribute__((visibility("default")))

#endif
