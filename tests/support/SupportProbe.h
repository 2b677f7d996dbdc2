/// @file
/// What a copy of the probe library answers.
#pragma once

extern "C" {
/// The file of the library `name` that is found under `root` (null: searched for); null if there is none.
const char* probe_find(const char* name, const char* root);
/// The logger of that name, as an address to compare.
const void* probe_logger(const char* name);
int probe_is_enabled(const char* name, int level);
}
