/// @file
/// What the client library shows: its classes and functions, and nothing of what they are made with.
#pragma once

#define QUILLON_CLIENT_API __attribute__((visibility("default")))
