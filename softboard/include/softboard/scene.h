/// @file
/// What stands in front of the camera: a scene, its light, a belt that moves it, and the sensors that feel the belt.
///
/// The board decides for every line where the belt stands when its exposure begins, and the scene gives the line's
/// pixels. A board without a belt moves its scene by one pixel with every line.
///
/// All functions may be called from any thread. Functions that return `int` give 0 or a negative SOFTBOARD_E_... code,
/// and change nothing if they fail; softboard_last_message then tells why, for people. What they set stays when
/// another design is put on the board; the belt then begins anew. A change lands between lines, never within one.
#ifndef SOFTBOARD_SCENE_H
#define SOFTBOARD_SCENE_H

#include <stddef.h>
#include <stdint.h>

#include "softboard/export.h"

#ifdef __cplusplus
extern "C" {
#endif

struct IXdevice;

/* ---- Scenes ---- */

/// Pixels of a pattern in a millimetre, along the belt.
#define SOFTBOARD_PATTERN_PIXELS_PER_MM 10.0

/// Shows a pattern: "bars" (the scene of a new board: eight upright colour bars), "ramp" (grey, rising by one of 8 bits
/// with every pixel to the right and every one along the belt), "checker" (black and white squares of 32 pixels),
/// "noise" or "noise:SEED" (every component of every pixel at random; the same seed gives the same pixels), "grey" or
/// "grey:V" (V from 0, black, to 255, white; 128 without it). SOFTBOARD_E_ARGUMENT for another text.
SOFTBOARD_API int softboard_scene_pattern(struct IXdevice* board, const char* pattern);
/// Shows a picture: a PNG or a PNM file (P2, P3, P5, P6), with 8 or 16 bits. Its first row is at 0 mm of the belt, and
/// every further one 1 / `pixels_per_mm` behind it; its columns are the camera's pixels.
/// @param wrap            not 0: the picture is repeated in both directions; 0: around it all is black
/// @param pixels_per_mm   0.001 to 1000
/// @return SOFTBOARD_E_FILE if the file cannot be read, is no such picture or has more than 2^27 pixels;
///         SOFTBOARD_E_ARGUMENT.
SOFTBOARD_API int softboard_scene_picture(struct IXdevice* board, const char* file, int wrap, double pixels_per_mm);

/// A line that a call-back is asked for. A tick is 8 ns of the board's clock.
typedef struct softboard_line {
    uint64_t size;       ///< of this structure
    uint64_t tick;       ///< when its exposure ended
    double position_mm;  ///< of the belt, when its exposure began
    double exposure_us;  ///< how long it was exposed
    int32_t flash;       ///< 1 if the flash was active meanwhile, else 0
} softboard_line;

/// Shows what a function draws: it puts the line's red, green and blue, 16 bits each, one pixel behind the other, into
/// `rgb`, which is black at first, and returns 0; the line is black otherwise. It is called on the thread that draws
/// the frame, without a lock, once for each line in the order of the frames. A null function is SOFTBOARD_E_ARGUMENT.
SOFTBOARD_API int softboard_scene_callback(struct IXdevice* board,
                                           int (*line)(void* user, const softboard_line* about, uint16_t* rgb,
                                                       uint32_t pixels),
                                           void* user);

/* ---- Light ---- */

/// How bright the scene is. Every component is multiplied by exposure / `reference_us` and, while the flash is active,
/// by `flash_gain`; then noise of a normal distribution is added, and the sum limited to what the camera can tell.
/// @param reference_us  the exposure at which the scene looks as it is; 0: the exposure does not matter
/// @param flash_gain    0 to 1000; 1: the flash does not matter
/// @param noise         standard deviation, as a part of full scale: 0 to 1
SOFTBOARD_API int softboard_scene_light(struct IXdevice* board, double reference_us, double flash_gain, double noise);
/// The seed of that noise, 1 for a new board: the same seed, ticks and scene give the same bytes.
SOFTBOARD_API int softboard_scene_seed(struct IXdevice* board, uint64_t seed);

/* ---- The belt ---- */

/// The belt moves with one speed until a time, counted from the call.
typedef struct softboard_move {
    double until_us;  ///< greater than that of the move before; infinite for one without end
    double mm_per_s;  ///< negative: the belt runs back; 0: it stands
} softboard_move;

/// No input: an encoder track that is not connected.
#define SOFTBOARD_NO_INPUT 0xFFFFFFFFu

/// Starts a belt at 0 mm, in place of an earlier one. Behind the last move it stands. Its encoder has two tracks,
/// square waves a quarter of a period apart with `counts_per_mm` periods in a millimetre: track A rises at every whole
/// count and leads while the belt runs forward.
/// @param a, b           inputs (0 to 7 GPI, 8 to 11 front GPI) that the tracks drive, or SOFTBOARD_NO_INPUT
/// @param counts_per_mm  0 to 100000; 0: no encoder
/// @param moves          null with 0 of them: no belt from now on
/// @return SOFTBOARD_E_ARGUMENT for numbers that make no sense, among them a speed at which an encoder track changes
///         faster than the clock ticks; SOFTBOARD_E_RANGE for an input that there is not.
SOFTBOARD_API int softboard_belt(struct IXdevice* board, unsigned a, unsigned b, double counts_per_mm,
                                 const softboard_move* moves, size_t count);
/// A light barrier: `input` is high while a part is in front of it, that is from `mm_first` to `mm_first + mm_length`
/// of the belt, and again every `mm_pitch`. With a pitch of 0 one part comes, with a length of 0 there is no barrier at
/// this input any more.
/// @return SOFTBOARD_E_ARGUMENT for a pitch that is not greater than the length, a part or a gap that is shorter than
///         0.000001 mm or too short for the fastest move of the belt; SOFTBOARD_E_RANGE for an input that there is
///         not.
SOFTBOARD_API int softboard_barrier(struct IXdevice* board, unsigned input, double mm_first, double mm_pitch,
                                    double mm_length);
/// Where the belt stands, in millimetres; 0 without a belt.
SOFTBOARD_API int softboard_belt_position(struct IXdevice* board, double* mm);

/* ---- Messages ---- */

/// Copies at most `size` bytes, with the terminator, of what went wrong last in a call of this file or of faults.h, or
/// with a picture that a debug point should have inserted; the empty text if nothing has. SOFTBOARD_E_RANGE if the text
/// is longer.
SOFTBOARD_API int softboard_last_message(struct IXdevice* board, char* buffer, size_t size);

#ifdef __cplusplus
}
#endif

#endif
