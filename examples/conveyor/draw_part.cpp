/// @file
/// Draws part.png, what a camera above a conveyor sees: a plate with a disc, rings and a ruler on a belt, 2.5 pixels a
/// millimetre, 410 mm of the belt's width and 480 mm of its length. A picture of it that is not true to scale shows it
/// at once.
///
///     draw_part part.png
#include <cairo.h>

#include <array>
#include <cmath>
#include <iostream>
#include <memory>
#include <numbers>

namespace {

constexpr double PixelsPerMm = 2.5;
constexpr double BeltWidth = 409.6;  // mm, as all that follows
constexpr double BeltLength = 480;
constexpr double PlateLeft = 54.8;
constexpr double PlateFront = 140;
constexpr double PlateSide = 300;
constexpr double Disc = 90;  // radius

struct Colour {
    double red, green, blue;
};
constexpr Colour Belt{0.13, 0.15, 0.16};
constexpr Colour Rib{0.20, 0.23, 0.24};
constexpr Colour Plate{0.86, 0.84, 0.78};
constexpr Colour Ink{0.10, 0.12, 0.20};
constexpr Colour Mark{0.80, 0.22, 0.12};

void fill(cairo_t* paper, Colour colour) {
    cairo_set_source_rgb(paper, colour.red, colour.green, colour.blue);
    cairo_fill(paper);
}

void bar(cairo_t* paper, double x, double y, double width, double height, Colour colour) {
    cairo_rectangle(paper, x, y, width, height);
    fill(paper, colour);
}

void disc(cairo_t* paper, double x, double y, double radius, Colour colour) {
    cairo_arc(paper, x, y, radius, 0, 2 * std::numbers::pi);
    fill(paper, colour);
}

/// A digit of seven segments, 8 mm wide and 14 mm high.
void digit(cairo_t* paper, double x, double y, unsigned number) {
    constexpr double thick = 2;
    // From the lowest bit on: top, middle, bottom; upper left, upper right, lower left, lower right.
    constexpr std::array<unsigned, 10> segments{125, 80, 55, 87, 90, 79, 111, 81, 127, 95};
    const auto has = [&](unsigned segment) { return (segments.at(number) >> segment & 1) != 0; };
    for (unsigned i = 0; i < 3; ++i) {
        if (has(i)) {
            bar(paper, x, y + 6 * i, 8, thick, Ink);
        }
    }
    for (unsigned i = 0; i < 4; ++i) {
        if (has(3 + i)) {
            bar(paper, x + (i % 2 == 1 ? 6 : 0), y + (i < 2 ? 0 : 6), thick, 8, Ink);
        }
    }
}

/// Ticks every 10 mm along the belt, with their centimetres every 50 mm.
void ruler(cairo_t* paper, double x, double y) {
    for (unsigned way = 0; way <= 280; way += 10) {
        const bool isLong = way % 50 == 0;
        bar(paper, x, y + way - 0.6, isLong ? 14 : 7, 1.2, Ink);
        if (isLong) {
            digit(paper, x + 18, y + way - 7, way / 100);
            digit(paper, x + 29, y + way - 7, way / 10 % 10);
        }
    }
}

void draw(cairo_t* paper) {
    bar(paper, 0, 0, BeltWidth, BeltLength, Belt);
    for (double rib = 0; rib < BeltLength; rib += 20) {
        bar(paper, 0, rib, BeltWidth, 2, Rib);
    }
    bar(paper, PlateLeft, PlateFront, PlateSide, PlateSide, Plate);
    ruler(paper, PlateLeft + 4, PlateFront + 10);
    const double x = PlateLeft + 180;
    const double y = PlateFront + PlateSide / 2;
    disc(paper, x, y, Disc, Ink);
    disc(paper, x, y, Disc - 30, Plate);
    disc(paper, x, y, Disc - 45, Mark);
    disc(paper, x, y, Disc - 75, Plate);
    for (const double corner : {PlateFront + 15, PlateFront + PlateSide - 35}) {
        bar(paper, PlateLeft + 265, corner, 20, 20, Mark);
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: draw_part FILE.png\n";
        return 2;
    }
    const std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> picture(
        cairo_image_surface_create(CAIRO_FORMAT_RGB24, static_cast<int>(BeltWidth * PixelsPerMm),
                                   static_cast<int>(BeltLength * PixelsPerMm)),
        cairo_surface_destroy);
    {
        const std::unique_ptr<cairo_t, decltype(&cairo_destroy)> paper(cairo_create(picture.get()), cairo_destroy);
        cairo_set_antialias(paper.get(), CAIRO_ANTIALIAS_NONE);
        cairo_scale(paper.get(), PixelsPerMm, PixelsPerMm);
        draw(paper.get());
    }
    const cairo_status_t status = cairo_surface_write_to_png(picture.get(), argv[1]);
    if (status != CAIRO_STATUS_SUCCESS) {
        std::cerr << argv[1] << ": " << cairo_status_to_string(status) << '\n';
        return 1;
    }
    return 0;
}
