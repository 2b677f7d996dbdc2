// Pictures of 8 x 3 pixels from every camera in every format, byte by byte.

#include <gtest/gtest.h>

#include "tests/pixels/Drawing.h"

namespace softboard::pixels::testing {
namespace {

/// Red, green and blue at full scale; a camera of fewer bits delivers the upper ones.
const std::vector<std::vector<Triple>> Rows = {
    {{0x0000, 0x0000, 0x0000},
     {0xffff, 0xffff, 0xffff},
     {0xffff, 0x0000, 0x0000},
     {0x0000, 0xffff, 0x0000},
     {0x0000, 0x0000, 0xffff},
     {0x8000, 0x4000, 0x2000},
     {0x0001, 0x0002, 0x0004},
     {0x1234, 0x5678, 0x9abc}},
    {{0xfedc, 0xba98, 0x7654},
     {0x3210, 0x0f1e, 0x2d3c},
     {0x4b5a, 0x6978, 0x8796},
     {0xa5b4, 0xc3d2, 0xe1f0},
     {0x00ff, 0xff00, 0x0ff0},
     {0x7fff, 0x8000, 0x8001},
     {0xdead, 0xbeef, 0xcafe},
     {0x0100, 0x0080, 0x0040}},
    {{0x1111, 0x2222, 0x3333},
     {0x4444, 0x5555, 0x6666},
     {0x7777, 0x8888, 0x9999},
     {0xaaaa, 0xbbbb, 0xcccc},
     {0xdddd, 0xeeee, 0xffff},
     {0x0020, 0x0010, 0x0008},
     {0xfffe, 0xfffc, 0xfff8},
     {0xc0de, 0x1dea, 0xf00d}},
};

struct Picture {
    std::uint32_t bits;        ///< of a component from the camera
    std::uint32_t formatBits;  ///< of a component in the frame, the upper ones of the word
    const char* rows[3];
};

// Blue, green, red, and so on with the next pixel: the first component in the low bits of the first bytes.
const Picture Pictures[] = {
    {8,
     8,
     {"000000ffffff0000ff00ff00ff00002040800000009a5612", "76bafe2d0f3287694be1c3a50fff0080807fcabede000001",
      "332211665544998877ccbbaaffeedd000000fffffff01dc0"}},
    {8,
     10,
     {"00000000fffcf30f0000fc03c03f00fc03000020000108000000a0891512",
      "d8a18b3f2d3c20c321692c11ce30a53cf00f008000f28732be7803000001",
      "cc204204665441442688dcc1cc2eaafce34e37000000c03ffffc034f07c0"}},
    {8,
     12,
     {"0000000000fff00fff000000f00f00f00f00f00f0000002000048000000000009a600512",
      "6007bae00f2df00032700869b004e1300ca5f000ff00008000087fa00cbee00d00000001",
      "3003221001665005449009887007ccb00baaf00feed00d00000000f00ffff00ff0d001c0"}},
    {8,
     14,
     {"000000000000ffc03ff00f000000c03f0000fc0300c03f0000000020001000080000000000a009580112",
      "801da00bf8032dc00320031c0269c012100e0c03a5c003f00f0000800020f0072803be80370000000001",
      "c00c200244006640154004640288c01dc00cec02aac03fe00e74030000000000fc03ffc03f000f7400c0"}},
    {8,
     16,
     {"00000000000000ff00ff00ff0000000000ff000000ff000000ff00000000002000400080000000000000009a00560012",
      "007600ba00fe002d000f003200870069004b00e100c300a5000f00ff000000800080007f00ca00be00de000000000001",
      "00330022001100660055004400990088007700cc00bb00aa00ff00ee00dd00000000000000ff00ff00ff00f0001d00c0"}},
    {10,
     8,
     {"000000ffffff0000ff00ff00ff00002040800000009a5612", "76bafe2d0f3287694be1c3a50fff0080807fcabede000001",
      "332211665544998877ccbbaaffeedd000000fffffff01dc0"}},
    {10,
     10,
     {"000000c0ffffff0f0000ff03f03f00ff03000020000108000000a8991512",
      "d9a9bb3f2d3c20e361692d1dfeb0a53ff03f008000feb7f2be7a07200001",
      "cc20424466554564a688ddcdecaeaaffef7e37000000f0ffffff037fc7c0"}},
    {10,
     12,
     {"00000000c0fffccfff000000fc0f00fc0f00fc0f0000002000048000000000809a640512",
      "6487baec0f2df00032784869b4c4e13c8ca5fc00ff0c008000c87facccbee84d00080001",
      "30032210416654454498898874c7ccb88baafccfeedc0d00000000fccffffc0ff0dcc1c0"}},
    {10,
     14,
     {"0000000000c0fff03ffc0f000000f03f0000ff0300f03f0000000020001000080000000000a809590112",
      "901da80bfb032dc00320031e4269d0121c0e0f83a5f003f00f0300800020fc072bc3bea0370400020001",
      "c00c200244406650154404668288d01dcc0cee82aaf03fec0e77030000000000ffc3fff03f000f77c0c0"}},
    {10,
     16,
     {"000000000000c0ffc0ffc0ff00000000c0ff0000c0ff0000c0ff00000000002000400080000000000000809a40560012",
      "407680bac0fe002d000f003280874069404bc0e1c0c380a5c00f00ffc00000800080c07fc0cac0be80de400080000001",
      "003300220011406640554044809980884077c0cc80bb80aac0ffc0eec0dd000000000000c0ffc0ffc0ff00f0c01dc0c0"}},
    {12,
     8,
     {"000000ffffff0000ff00ff00ff00002040800000009a5612", "76bafe2d0f3287694be1c3a50fff0080807fcabede000001",
      "332211665544998877ccbbaaffeedd000000fffffff01dc0"}},
    {12,
     10,
     {"000000c0ffffff0f0000ff03f03f00ff03000020000108000000a8991512",
      "d9a9bb3f2d3c20e361692d1dfeb0a53ff03f008000feb7f2be7a07200001",
      "cc20424466554564a688ddcdecaeaaffef7e37000000f0ffffff037fc7c0"}},
    {12,
     12,
     {"00000000f0ffffffff000000ff0f00ff0f00ff0f0000002000048000000000b09a673512",
      "6597baed3f2df11032797869b5f4e13dbca5ff00ff0f008000f87fafecbeea4d00080001",
      "33232211616655454499898877c7ccbbabaaffefeedd0d00012000ffffffff0ff0ded1c0"}},
    {12,
     14,
     {"0000000000f0fffc3fff0f000000fc3f00c0ff0300fc3f0000000020001000080000000000abc9593112",
      "941da94bfb332dc40321431e7269d4121f4e0fb3a5fc03f0cf0300800020ffc72be3bea8370400020001",
      "cc0c224244606654154444668288dc1dcccceea2aafc3fee4e770300040002c0fff3fffc3f008f77d0c0"}},
    {12,
     16,
     {"000000000000f0fff0fff0ff00000000f0ff0000f0ff0000f0ff00000000002000400080000000000000b09a70563012",
      "507690bad0fe302d100f103290877069504bf0e1d0c3b0a5f00f00fff00000800080f07ff0cae0bea0de400080000001",
      "303320221011606650554044909980887077c0ccb0bba0aaf0ffe0eed0dd000010002000f0fff0fff0ff00f0e01dd0c0"}},
    {14,
     8,
     {"000000ffffff0000ff00ff00ff00002040800000009a5612", "76bafe2d0f3287694be1c3a50fff0080807fcabede000001",
      "332211665544998877ccbbaaffeedd000000fffffff01dc0"}},
    {14,
     10,
     {"000000c0ffffff0f0000ff03f03f00ff03000020000108000000a8991512",
      "d9a9bb3f2d3c20e361692d1dfeb0a53ff03f008000feb7f2be7a07200001",
      "cc20424466554564a688ddcdecaeaaffef7e37000000f0ffffff037fc7c0"}},
    {14,
     12,
     {"00000000f0ffffffff000000ff0f00ff0f00ff0f0000002000048000000000b09a673512",
      "6597baed3f2df11032797869b5f4e13dbca5ff00ff0f008000f87fafecbeea4d00080001",
      "33232211616655454499898877c7ccbbabaaffefeedd0d00012000ffffffff0ff0ded1c0"}},
    {14,
     14,
     {"0000000000fcffffffff0f000000ff3f00f0ff0300ff3f00000000200010001800000000c0abe9593512",
      "959da97bfb3f2dc70321531e7a69d6121f4e0fb7a5fc03f0ff03008000e0fff72befbeab370400020001",
      "cc0c224244646655554464668a88ddddcceceeaaaaffffee7e770b00040002e0ffffffffff00af77dcc0"}},
    {14,
     16,
     {"000000000000fcfffcfffcff00000000fcff0000fcff0000fcff00000000002000400080040000000000bc9a78563412",
      "547698badcfe3c2d1c0f103294877869584bf0e1d0c3b4a5f00f00fffc0000800080fc7ffccaecbeacde400080000001",
      "303320221011646654554444989988887477ccccb8bba8aafcffeceedcdd080010002000f8fffcfffcff0cf0e81ddcc0"}},
    {16,
     8,
     {"000000ffffff0000ff00ff00ff00002040800000009a5612", "76bafe2d0f3287694be1c3a50fff0080807fcabede000001",
      "332211665544998877ccbbaaffeedd000000fffffff01dc0"}},
    {16,
     10,
     {"000000c0ffffff0f0000ff03f03f00ff03000020000108000000a8991512",
      "d9a9bb3f2d3c20e361692d1dfeb0a53ff03f008000feb7f2be7a07200001",
      "cc20424466554564a688ddcdecaeaaffef7e37000000f0ffffff037fc7c0"}},
    {16,
     12,
     {"00000000f0ffffffff000000ff0f00ff0f00ff0f0000002000048000000000b09a673512",
      "6597baed3f2df11032797869b5f4e13dbca5ff00ff0f008000f87fafecbeea4d00080001",
      "33232211616655454499898877c7ccbbabaaffefeedd0d00012000ffffffff0ff0ded1c0"}},
    {16,
     14,
     {"0000000000fcffffffff0f000000ff3f00f0ff0300ff3f00000000200010001800000000c0abe9593512",
      "959da97bfb3f2dc70321531e7a69d6121f4e0fb7a5fc03f0ff03008000e0fff72befbeab370400020001",
      "cc0c224244646655554464668a88ddddcceceeaaaaffffee7e770b00040002e0ffffffffff00af77dcc0"}},
    {16,
     16,
     {"000000000000ffffffffffff00000000ffff0000ffff0000ffff00000000002000400080040002000100bc9a78563412",
      "547698badcfe3c2d1e0f1032968778695a4bf0e1d2c3b4a5f00f00ffff0001800080ff7ffecaefbeadde400080000001",
      "333322221111666655554444999988887777ccccbbbbaaaaffffeeeedddd080010002000f8fffcfffeff0df0ea1ddec0"}},
};

TEST(PixelFormats, EveryCameraInEveryFormat) {
    RowScene scene(Rows);
    for (const Picture& picture : Pictures) {
        SCOPED_TRACE(std::to_string(picture.bits) + " bits to " + std::to_string(picture.formatBits));
        Settings settings;
        settings.bits = picture.bits;
        settings.formatBits = picture.formatBits;
        settings.shift = 16 - picture.formatBits;
        settings.sensorWidth = 8;
        settings.xLength = 8;
        const Frame frame = drawFrame(settings, 3, scene);
        const std::size_t lineSize = 3 * picture.formatBits;
        EXPECT_EQ(frame.drawn, (Drawn{.bytes = 3 * lineSize, .lines = 3, .truncated = false}));
        for (std::size_t row = 0; row < 3; ++row) {
            EXPECT_EQ(frame.hex(row * lineSize, lineSize), picture.rows[row]) << "row " << row;
        }
    }
}

TEST(PixelFormats, RedFirst) {
    RowScene scene({{{0x1234, 0x5678, 0x9abc}, {0x0102, 0x0304, 0x0506}, {0, 0, 0}, {0xffff, 0, 0xf0f0}}});
    Settings settings;
    settings.bits = 16;
    settings.sensorWidth = 4;
    settings.xLength = 4;
    settings.redFirst = true;
    settings.shift = 8;
    settings.formatBits = 8;
    EXPECT_EQ(drawFrame(settings, 1, scene).hex(), "12569a010305000000ff00f0");
    settings.shift = 0;
    settings.formatBits = 16;
    EXPECT_EQ(drawFrame(settings, 1, scene).hex(), "34127856bc9a020104030605000000000000ffff0000f0f0");
    settings.shift = 4;
    settings.formatBits = 12;
    EXPECT_EQ(drawFrame(settings, 1, scene).hex(), "237156ab090130000500000000f0ff00f0f0");
}

TEST(PixelFormats, LowBitsOnlyWithoutAShift) {
    RowScene scene({{{0x1234, 0x5678, 0x9abc}, {0xf0ff, 0x0f01, 0xffff}, {0, 0, 0}, {0, 0, 0}}});
    Settings settings;
    settings.bits = 16;
    settings.sensorWidth = 4;
    settings.xLength = 4;
    settings.formatBits = 8;
    EXPECT_EQ(drawFrame(settings, 1, scene).hex(), "bc7834ff01ff000000000000");
}

TEST(PixelFormats, AWidthThatIsNoMultipleOfFourEndsWithBitsOfZero) {
    RowScene scene({greys({0xffff, 0xffff, 0xffff})});
    Settings settings;
    settings.bits = 16;
    settings.sensorWidth = 3;
    settings.formatBits = 10;
    settings.xLength = 1;
    EXPECT_EQ(drawFrame(settings, 1, scene).hex(), "ffffff3f");
    settings.xLength = 2;
    EXPECT_EQ(drawFrame(settings, 1, scene).hex(), "ffffffffffffff0f");
    settings.xLength = 3;
    EXPECT_EQ(drawFrame(settings, 1, scene).hex(), "ffffffffffffffffffffff03");
}

}  // namespace
}  // namespace softboard::pixels::testing
