// An application in C: opens the applet on a software board with nothing but the public header, sets a parameter, and
// closes it. The exit status is 0, or the line that something went wrong in.
#include "quillon/quillon.h"

#include <string.h>

#include "softboard/softboard.h"

#define EXPECT(condition)    \
    do {                     \
        if (!(condition)) {  \
            return __LINE__; \
        }                    \
    } while (0)

int main(void) {
    struct IXdevice* board = softboard_open();
    EXPECT(board != NULL);

    int status = 1;
    QuillonWrapper* location = Std_entry(board, &status, 0);
    QuillonHandle handle = &location;
    EXPECT(location != NULL && status == QuillonSuccess);

    uint32_t width = 2048;
    EXPECT(Fg_setParameterWithType(handle, FG_WIDTH, &width, 0, FgTypeUInt32) == QuillonSuccess);
    width = 2046;
    EXPECT(Fg_setParameterWithType(handle, FG_WIDTH, &width, 0, FgTypeUInt32) == QuillonValueNotAligned);
    EXPECT(Fg_getParameterWithType(handle, FG_WIDTH, &width, 0, FgTypeUInt32) == QuillonSuccess && width == 2048);

    char* file = NULL;
    EXPECT(Fg_getParameterWithType(handle, FG_TAV_FILE, &file, 0, FgTypeString) == QuillonSuccess);
    EXPECT(strcmp(file, "Quillon.tav") == 0);
    EXPECT(Fg_freeParameterStringWithType(handle, FG_TAV_FILE, file, 0, FgTypeString) == QuillonSuccess);

    const RegisterInfo* record = Fg_getParameterInfo(handle, 0);
    EXPECT(record != NULL && record->type == RegisterTypeGroup && record->as.group.childCount > 0);

    char name[] = "FG_COL24";
    EXPECT(Info(QuillonInfoEnumerator, 0, 0, name, NULL) == FG_COL24);

    EXPECT(Fg_FreeGrabber(handle) == QuillonSuccess && location == NULL);
    EXPECT(Fg_getLastErrorNumber(handle) == QuillonInvalidHandle);
    EXPECT(softboard_close(board) == SOFTBOARD_OK);
    return 0;
}
