/* The C interface, linked: opens the applet on a software board and reads a parameter. */
#include <stdio.h>

#include "quillon/quillon.h"
#include "softboard/softboard.h"

int main(void) {
    struct IXdevice* board = softboard_open();
    int status = 1;
    QuillonWrapper* location = Std_entry(board, &status, 0);
    uint32_t width = 0;
    if (location == NULL || Fg_getParameterWithType(&location, FG_WIDTH, &width, 0, FgTypeUInt32) != QuillonSuccess) {
        return 1;
    }
    printf("FG_WIDTH = %u\n", (unsigned)width);
    return Fg_FreeGrabber(&location) == QuillonSuccess && softboard_close(board) == SOFTBOARD_OK ? 0 : 1;
}
