#include "applet/Images.h"

extern "C" {
extern unsigned char quillonDesignImage[];
extern unsigned char quillonIcon[];
}

namespace quillon {

unsigned char* designImage() {
    return quillonDesignImage;
}

unsigned char* icon() {
    return quillonIcon;
}

}  // namespace quillon
