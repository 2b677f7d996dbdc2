#include "cli/Chart.h"
#include "quillon/client/Text.h"

#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <exception>
#include <memory>
#include <sstream>
#include <utility>

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

// The picture: its width, and the place of the frame that the axes draw in it.
constexpr int PictureWidth = 960;
constexpr double FrameTop = 72;
constexpr double FrameRight = 920;
constexpr double Margin = 20;  // between the edge and what stands nearest to it
constexpr double FrameHeight = 400;
constexpr double RowHeight = 48;  // where curves are rows
constexpr double FontSize = 14;
constexpr double LineHeight = 20;
constexpr double AxisHeight = 56;  // numbers and label below the frame

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

using Surface = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;
using Context = std::unique_ptr<cairo_t, decltype(&cairo_destroy)>;

Surface makeSurface(int height) {
    return {cairo_image_surface_create(CAIRO_FORMAT_RGB24, PictureWidth, height), cairo_surface_destroy};
}

Context makeContext(const Surface& surface) {
    Context context(cairo_create(surface.get()), cairo_destroy);
    cairo_set_source_rgb(context.get(), 1, 1, 1);
    cairo_paint(context.get());
    cairo_select_font_face(context.get(), "sans-serif", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(context.get(), FontSize);
    return context;
}

double widthOf(const Context& context, const std::string& words) {
    cairo_text_extents_t extents;
    cairo_text_extents(context.get(), words.c_str(), &extents);
    return extents.x_advance;
}

/// Where the parts of a picture lie: the names beside the frame make it narrower, the captions below it higher.
struct Layout {
    double frameLeft = 0;
    double frameBottom = 0;
    std::vector<std::string> captions;  ///< in lines that fit
    int height = 0;
};

Layout layoutOf(const Chart& chart) {
    const Surface surface = makeSurface(1);
    const Context context = makeContext(surface);
    Layout layout;
    double names = chart.yTicks ? widthOf(context, client::readable(chart.y.max)) : 0;
    for (const Curve& curve : chart.curves) {
        names = std::max(names, chart.yTicks ? 0 : widthOf(context, curve.name));
    }
    layout.frameLeft = Margin + names + 8;
    layout.frameBottom =
        FrameTop +
        (chart.yTicks ? FrameHeight : RowHeight * static_cast<double>(std::max<std::size_t>(chart.curves.size(), 1)));
    for (const std::string& caption : chart.captions) {
        std::string line;
        std::istringstream words(caption);
        for (std::string word; words >> word;) {
            std::string longer = line;
            longer += (line.empty() ? "" : " ") + word;
            if (!line.empty() && widthOf(context, longer) > PictureWidth - 2 * Margin) {
                layout.captions.push_back(std::exchange(line, "    " + word));
            } else {
                line = longer;
            }
        }
        layout.captions.push_back(line);
    }
    layout.height = static_cast<int>(layout.frameBottom + AxisHeight + Margin +
                                     LineHeight * static_cast<double>(layout.captions.size()));
    return layout;
}

/// Draws one chart; the library's objects go away with it.
class Picture {
public:
    explicit Picture(const Chart& chart)
        : chart_(chart),
          layout_(layoutOf(chart)),
          surface_(makeSurface(layout_.height)),
          context_(makeContext(surface_)) {
        drawAxes();
        for (const Curve& curve : chart.curves) {
            drawCurve(curve);
        }
        drawNames();
        drawCaptions();
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
    double left(double x) const { return layout_.frameLeft + placeOn(chart_.x, x) * (FrameRight - layout_.frameLeft); }
    double top(double y) const { return layout_.frameBottom - placeOn(chart_.y, y) * (layout_.frameBottom - FrameTop); }

    void line(double fromX, double fromY, double toX, double toY) {
        cairo_move_to(context_.get(), fromX, fromY);
        cairo_line_to(context_.get(), toX, toY);
        cairo_stroke(context_.get());
    }

    /// Writes a text; `share` says how much of its width lies left of x.
    void text(const std::string& words, double x, double y, double share) {
        cairo_move_to(context_.get(), x - share * widthOf(context_, words), y);
        cairo_show_text(context_.get(), words.c_str());
    }

    void colour(const Colour& colour) { cairo_set_source_rgb(context_.get(), colour.red, colour.green, colour.blue); }

    /// The marks of an axis, and its upper bound, which those keep clear of that would touch its number.
    static std::vector<double> marksOf(const Axis& axis, int most) {
        constexpr double clear = 0.05;
        std::vector<double> marks = ticks(axis, most);
        std::erase_if(marks, [&](double mark) { return axis.max - mark < clear * (axis.max - axis.min); });
        marks.push_back(axis.max);
        return marks;
    }

    void drawAxes() {
        cairo_set_line_width(context_.get(), 1);
        for (const double x : marksOf(chart_.x, 10)) {
            drawTick(left(x), FrameTop, left(x), layout_.frameBottom);
            text(client::readable(x), left(x), layout_.frameBottom + 20, 0.5);
        }
        for (const double y : chart_.yTicks ? marksOf(chart_.y, 8) : std::vector<double>()) {
            drawTick(layout_.frameLeft, top(y), FrameRight, top(y));
            text(client::readable(y), layout_.frameLeft - 8, top(y) + 5, 1.0);
        }
        line(layout_.frameLeft, FrameTop, layout_.frameLeft, layout_.frameBottom);
        line(layout_.frameLeft, layout_.frameBottom, FrameRight, layout_.frameBottom);
        text(chart_.title, PictureWidth / 2.0, Margin + 8, 0.5);
        text(chart_.x.label, FrameRight, layout_.frameBottom + 42, 1.0);
        text(chart_.y.label, Margin, FrameTop - 16, 0.0);
    }

    void drawTick(double fromX, double fromY, double toX, double toY) {
        cairo_set_source_rgb(context_.get(), 0.85, 0.85, 0.85);
        line(fromX, fromY, toX, toY);
        cairo_set_source_rgb(context_.get(), 0, 0, 0);
    }

    void drawCurve(const Curve& curve) {
        cairo_set_line_width(context_.get(), chart_.yTicks ? 2 : 1.5);
        colour(curve.colour);
        cairo_new_path(context_.get());  // a text leaves a point behind it
        if (!curve.note.empty() && !curve.points.empty()) {
            text(curve.note, left(curve.points.front().first) + 12, top(curve.points.front().second) - 8, 0.0);
            return;
        }
        for (const auto& [x, y] : curve.points) {
            cairo_line_to(context_.get(), left(x), top(y));
        }
        cairo_stroke(context_.get());
    }

    /// Beside their rows, or above the frame, where no curve is.
    void drawNames() {
        double x = FrameRight;
        double row = 0;
        for (auto curve = chart_.curves.rbegin(); curve != chart_.curves.rend(); ++curve) {
            colour(curve->colour);
            if (chart_.yTicks) {
                text(curve->name, x, FrameTop - 16, 1.0);
                x -= widthOf(context_, curve->name) + Margin;
            } else {
                text(curve->name, layout_.frameLeft - 8, layout_.frameBottom - RowHeight * (row + 0.5) + 5, 1.0);
                ++row;
            }
        }
    }

    void drawCaptions() {
        cairo_set_source_rgb(context_.get(), 0, 0, 0);
        double y = layout_.frameBottom + AxisHeight + LineHeight;
        for (const std::string& caption : layout_.captions) {
            text(caption, Margin, y, 0.0);
            y += LineHeight;
        }
    }

    const Chart& chart_;
    const Layout layout_;
    Surface surface_;
    Context context_;
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
    if (const std::string suffix = file.extension(); !suffix.empty() && suffix != ".png") {
        throw UsageError("\"" + file.string() + "\": a drawing is written as .png");
    }
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
