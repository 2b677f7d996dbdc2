/// @file
/// What goes wrong on the way of the pictures: lines and frames that are lost or damaged, a camera that is gone, a host
/// that does not take what the board has. Failures of single accesses are planned with softboard_plan_fault.
///
/// All functions may be called from any thread, and return 0 or a negative SOFTBOARD_E_... code. What is planned stands
/// until it has struck, or softboard_clear_faults forgets it; softboard_clear_faults also ends what lasts. A board's
/// time is that of its clock (softboard/clock.h); a design that is put on the board ends the outages, as its time
/// begins anew.
#ifndef SOFTBOARD_FAULTS_H
#define SOFTBOARD_FAULTS_H

#include <stdint.h>

#include "softboard/export.h"

#ifdef __cplusplus
extern "C" {
#endif

struct IXdevice;

/// What befalls a line.
enum softboard_line_faults {
    SOFTBOARD_FAULT_DROP = 0,        ///< it does not arrive from the camera, and counts as lost
    SOFTBOARD_FAULT_REPEAT = 1,      ///< it arrives twice, at once
    SOFTBOARD_FAULT_INVERT_BITS = 2  ///< each bit of its pixels is inverted
};

/// What befalls a frame.
enum softboard_frame_faults {
    SOFTBOARD_FAULT_LOSE = 0,      ///< it is lost on its way, with all its lines
    SOFTBOARD_FAULT_TRUNCATE = 1,  ///< only the first `amount` of its lines reach the host; the others count as lost
    SOFTBOARD_FAULT_STALL_DMA = 2  ///< when its first line is there, the DMA stands still for `amount` microseconds
};

/// What can be out of order for a time.
enum softboard_outages {
    SOFTBOARD_OUTAGE_CAMERA = 0,  ///< softboard_camera
    SOFTBOARD_OUTAGE_LINK = 1     ///< softboard_link
};

/// Plans what befalls the `nth` line (from 1) that the camera or its simulator sends into the path from now on; 0:
/// every line.
SOFTBOARD_API int softboard_plan_line_fault(struct IXdevice* board, uint64_t nth, int what);
/// Plans what befalls the `nth` frame (from 1) that begins from now on in an acquisition with a memory; 0: every frame.
/// @param amount  lines (whole, at least 1) or microseconds (0 to 60 s); ignored by SOFTBOARD_FAULT_LOSE
SOFTBOARD_API int softboard_plan_frame_fault(struct IXdevice* board, uint64_t nth, int what, double amount);
/// Plans that the camera or the link is gone from `after_us` on, counted from now, and back `for_us` later; infinite:
/// never.
SOFTBOARD_API int softboard_plan_outage(struct IXdevice* board, int what, double after_us, double for_us);

/// Takes the camera away (0) or brings it back: without it no line comes of a line trigger, and bit 0 of the SDK's
/// camera status is 0.
SOFTBOARD_API int softboard_camera(struct IXdevice* board, int connected);
/// Takes the link to the host down (0) or up: without it no frame reaches the host, and the board's status tells a link
/// of no lanes. Frames then wait in the board's memory as long as they fit.
SOFTBOARD_API int softboard_link(struct IXdevice* board, int up);
/// How many bytes of pictures reach the host in a second of the board's time: above 0, infinite for at once; 3.6e9 for
/// a new board, as PCIe brings with 8 lanes of 5.0 GT/s and 256 bytes of payload.
SOFTBOARD_API int softboard_dma_rate(struct IXdevice* board, double bytes_per_second);

#ifdef __cplusplus
}
#endif

#endif
