/// @file
/// The log dispatcher, `libcommon-logging-dispatcher.so`, from the host's side.
///
/// A message goes out as the line "LEVEL LOGGER TEXT" to the file that ORLO_LOG_FILE names (appended to), or to stderr.
/// Loggers start at the level of ORLO_LOG_LEVEL, 7 (silent) if it is not set; both are read at the first use.
/// Clients find the library through its data symbol `logging_dispatcher_descriptor`.
#ifndef SOFTBOARD_DISPATCHER_H
#define SOFTBOARD_DISPATCHER_H

#include "softboard/export.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef void (*dispatcher_sink)(const char* logger, int level, const char* text);

/// Changes the level of a logger, of all loggers if `logger` is null, and tells every attached client that knows it. A
/// logger that nobody has asked for yet starts at that level.
SOFTBOARD_API void dispatcher_set_level(const char* logger, int level);
/// Gives every message to `sink` instead of writing it; null writes again.
SOFTBOARD_API void dispatcher_set_sink(dispatcher_sink sink);
/// The dispatcher goes away: tells every attached client and forgets it.
SOFTBOARD_API void dispatcher_detach_all(void);
/// Number of attached clients.
SOFTBOARD_API int dispatcher_client_count(void);

#ifdef __cplusplus
}
#endif

#endif
