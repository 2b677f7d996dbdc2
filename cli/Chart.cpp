#include "cli/Chart.h"
#include "quillon/client/Text.h"

#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <exception>
#include <memory>

#include "cli/ExitStatus.h"
#include "cli/PartFile.h"
#include "cli/Terminal.h"
#include "cli/Values.h"

namespace quillon::cli {

namespace {

/// Where a number lies on an axis: 0 at its lower bound, 1 at its upper.
double placeOn(const Axis& axis, double number) {
    return axis.max > axis.min ? std::clamp((number - axis.min) / (axis.max - axis.min), 0.0, 1.0) : 0.0;
}

/// The curve's y at x: that of the last point that does not lie behind it.
double valueAt(const Curve& curve, double x) {
    const auto behind = std::upper_bound(curve.points.begin(), curve.points.end(), x,
                                         [](double wanted, const auto& point) { return wanted < point.first; });
    return behind == curve.points.begin() ? curve.points.front().second : std::prev(behind)->second;
}

void drawCurve(const Chart& chart, const Curve& curve, std::vector<std::string>& canvas) {
    const std::size_t width = canvas.front().size();
    const auto rows = static_cast<double>(canvas.size() - 1);
    for (std::size_t column = 0; column < width && !curve.points.empty(); ++column) {
        const double share = width > 1 ? static_cast<double>(column) / static_cast<double>(width - 1) : 0.0;
        const double value = valueAt(curve, chart.x.min + share * (chart.x.max - chart.x.min));
        const auto row = static_cast<std::size_t>(std::lround(rows * (1.0 - placeOn(chart.y, value))));
        canvas[row][column] = curve.mark;
    }
}

std::string padded(const std::string& text, std::size_t width) {
    return std::string(width - std::min(width, displayWidth(text)), ' ') + text;
}

// The picture: its size and the frame that the axes draw in it.
constexpr int PictureWidth = 960;
constexpr int PictureHeight = 540;
constexpr double FrameLeft = 110;
constexpr double FrameTop = 50;
constexpr double FrameRight = 930;
constexpr double FrameBottom = 470;
constexpr double FontSize = 14;

/// The way of a picture's bytes into a file; the library is C, which no exception may pass through.
struct Sink {
    PartFile part;
    std::exception_ptr failure;
};

cairo_status_t append(void* target, const unsigned char* data, unsigned size) {
    auto& sink = *static_cast<Sink*>(target);
    try {
        sink.part.write(std::as_bytes(std::span(data, size)));
        return CAIRO_STATUS_SUCCESS;
    } catch (const RefusedError&) {
        sink.failure = std::current_exception();
        return CAIRO_STATUS_WRITE_ERROR;
    }
}

/// Draws one chart; the library's objects go away with it.
class Picture {
public:
    explicit Picture(const Chart& chart)
        : chart_(chart),
          surface_(cairo_image_surface_create(CAIRO_FORMAT_RGB24, PictureWidth, PictureHeight), cairo_surface_destroy),
          context_(cairo_create(surface_.get()), cairo_destroy) {
        cairo_set_source_rgb(context_.get(), 1, 1, 1);
        cairo_paint(context_.get());
        cairo_select_font_face(context_.get(), "sans-serif", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
        cairo_set_font_size(context_.get(), FontSize);
        drawAxes();
        for (const Curve& curve : chart.curves) {
            drawCurve(curve);
        }
        drawNames();
    }

    void write(const std::filesystem::path& file) const {
        Sink sink{PartFile(file), nullptr};
        const cairo_status_t status = cairo_surface_write_to_png_stream(surface_.get(), append, &sink);
        if (sink.failure != nullptr) {
            std::rethrow_exception(sink.failure);
        }
        if (status != CAIRO_STATUS_SUCCESS) {
            throw RefusedError(file.string() + " cannot be written: " + cairo_status_to_string(status));
        }
        sink.part.takePlace();
    }

private:
    double left(double x) const { return FrameLeft + placeOn(chart_.x, x) * (FrameRight - FrameLeft); }
    double top(double y) const { return FrameBottom - placeOn(chart_.y, y) * (FrameBottom - FrameTop); }

    void line(double fromX, double fromY, double toX, double toY) {
        cairo_move_to(context_.get(), fromX, fromY);
        cairo_line_to(context_.get(), toX, toY);
        cairo_stroke(context_.get());
    }

    /// Writes a text; `share` says how much of its width lies left of x.
    void text(const std::string& words, double x, double y, double share) {
        cairo_text_extents_t extents;
        cairo_text_extents(context_.get(), words.c_str(), &extents);
        cairo_move_to(context_.get(), x - share * extents.width, y);
        cairo_show_text(context_.get(), words.c_str());
    }

    void drawAxes() {
        cairo_set_line_width(context_.get(), 1);
        for (const double x : ticks(chart_.x, 10)) {
            drawTick(left(x), FrameTop, left(x), FrameBottom);
            text(client::readable(x), left(x), FrameBottom + 20, 0.5);
        }
        for (const double y : chart_.yTicks ? ticks(chart_.y, 8) : std::vector<double>()) {
            drawTick(FrameLeft, top(y), FrameRight, top(y));
            text(client::readable(y), FrameLeft - 8, top(y) + 5, 1.0);
        }
        line(FrameLeft, FrameTop, FrameLeft, FrameBottom);
        line(FrameLeft, FrameBottom, FrameRight, FrameBottom);
        text(chart_.title, (FrameLeft + FrameRight) / 2, FrameTop - 20, 0.5);
        text(chart_.x.label, (FrameLeft + FrameRight) / 2, FrameBottom + 50, 0.5);
        text(chart_.y.label, 10, FrameTop - 20, 0.0);
    }

    void drawTick(double fromX, double fromY, double toX, double toY) {
        cairo_set_source_rgb(context_.get(), 0.85, 0.85, 0.85);
        line(fromX, fromY, toX, toY);
        cairo_set_source_rgb(context_.get(), 0, 0, 0);
    }

    void drawCurve(const Curve& curve) {
        cairo_set_line_width(context_.get(), 2);
        cairo_set_source_rgb(context_.get(), curve.colour.red, curve.colour.green, curve.colour.blue);
        cairo_new_path(context_.get());  // a text leaves a point behind it
        for (const auto& [x, y] : curve.points) {
            cairo_line_to(context_.get(), left(x), top(y));
        }
        cairo_stroke(context_.get());
    }

    void drawNames() {
        double x = FrameLeft + 12;
        for (const Curve& curve : chart_.curves) {
            cairo_set_source_rgb(context_.get(), curve.colour.red, curve.colour.green, curve.colour.blue);
            if (!chart_.yTicks && !curve.points.empty()) {
                text(curve.name, FrameLeft - 8, top(curve.points.front().second), 1.0);
            } else {
                text(curve.name, x, FrameTop + 16, 0.0);
                x += 90;
            }
        }
    }

    const Chart& chart_;
    std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> surface_;
    std::unique_ptr<cairo_t, decltype(&cairo_destroy)> context_;
};

}  // namespace

std::vector<std::string> asText(const Chart& chart, std::size_t width, std::size_t height) {
    std::vector<std::string> canvas(height, std::string(width, ' '));
    for (const Curve& curve : chart.curves) {
        drawCurve(chart, curve, canvas);
    }
    const std::string highest = client::readable(chart.y.max);
    const std::string lowest = client::readable(chart.y.min);
    const std::size_t margin = std::max(highest.size(), lowest.size());
    std::vector<std::string> lines;
    for (std::size_t row = 0; row < height; ++row) {
        const std::string bound = row == 0 ? highest : row + 1 == height ? lowest : "";
        lines.push_back(padded(bound, margin) + " |" + canvas[row]);
    }
    lines.push_back(std::string(margin, ' ') + " +" + std::string(width, '-'));
    const std::string first = client::readable(chart.x.min);
    const std::string last = client::readable(chart.x.max) + (chart.x.label.empty() ? "" : " " + chart.x.label);
    lines.push_back(std::string(margin + 2, ' ') + first + padded(last, width - std::min(width, first.size())));
    for (std::string& line : lines) {
        line.erase(line.find_last_not_of(' ') + 1);
    }
    return lines;
}

void writePicture(const Chart& chart, const std::filesystem::path& file) {
    Picture(chart).write(file);
}

std::vector<double> ticks(const Axis& axis, int most) {
    const double least = (axis.max - axis.min) / most;
    if (!(least > 0) || !std::isfinite(least)) {
        return {axis.min};
    }
    const double power = std::pow(10.0, std::floor(std::log10(least)));
    double step = power * 10;
    for (const double factor : {1.0, 2.0, 5.0}) {
        if (power * factor >= least) {
            step = power * factor;
            break;
        }
    }
    std::vector<double> marks;
    for (double index = std::ceil(axis.min / step); index * step <= axis.max; ++index) {
        marks.push_back(index * step);
    }
    return marks;
}

}  // namespace quillon::cli
