// Full redraws of a noisy line at 1600 x 900 pixels as JSON lines, one for each measurement, in the form that programs for other plotting libraries print too: their lines join one table.
// One process for each configuration and number of samples.
//
//   rivals_peer [--config default|log|empty] [--n SAMPLES] [--reps REPETITIONS] [--budget SECONDS] [--png FILE]
//
// "default" has linear axes, "log" a logarithmic y axis over the same line's powers of ten, "empty" the axes of "default" around two samples: what a frame costs without its curve.
//
// Times are in milliseconds, medians with the shortest beside them:
//   cold   making the graph, handing the data over and the first frame, with what happens once in a process: fonts are looked up and loaded.
//          The text system is installed before the data is made, as toolkits are started there
//   warm   the same view once more, from the data to the pixels
//   pan    after a step of a ten-thousandth of the x range
//   zoom   likewise with a hundredth of the x range in view
// "ink" is the share of pixels in the line's colour, "rss_base_mb" the most memory in use before the data is handed over and "rss_peak_mb" at the end.

#include <TOLVGraphing/axes/TOLVLogarithmicAxis.h>
#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/platform/graphics/CurrentContext.h>
#include <TOLVMath/TOLVRealVector.h>
#include <desktop/cairo/CairoContext.h>
#include <desktop/cairo/CairoPointers.h>
#include <desktop/text/PangoTextSystem.h>

#include "Noise.h"
#include "Timing.h"

#include <cairo.h>
#include <sys/resource.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

using namespace TOLVGraphing;
using namespace TOLVGraphing::benchmarking;

namespace {

constexpr int kWidth = 1600;
constexpr int kHeight = 900;
constexpr double kXMin = 0.0;
constexpr double kXMax = 1000.0;
constexpr double kYMin = -85.0;
constexpr double kYMax = 85.0;
/// What y is divided by to become an exponent of ten on the logarithmic axis.
constexpr double kUnitsOfDecade = 40.0;
/// A pixel counts as the line's when its blue is so much above its red.
constexpr int kInkDifference = 30;
/// More would not fit into any memory.
constexpr double kMostSamples = 1.0e10;
const Color kLineColor(0x1F / 255.0, 0x4E / 255.0, 0x9E / 255.0);

struct Options {
    std::string config = "default";
    std::string png;
    std::size_t sampleCount = 1'000'000;
    int repetitions = 9;
    /// For each measurement that is repeated.
    double budgetSeconds = 6.0;
};

struct Samples {
    std::vector<float> x;
    std::vector<float> y;
};

/// Five waves with noise as high as they are; the same numbers in every program.
Samples noisyLine(std::size_t count, bool isPowerOfTen)
{
    Samples samples{std::vector<float>(count), std::vector<float>(count)};
    Noise noise;
    for (std::size_t i = 0; i < count; ++i) {
        const double place = static_cast<double>(i) / static_cast<double>(count);
        const double level = 30.0 * std::sin(place * 25.0) + 100.0 * (noise.next() - 0.5);
        samples.x[i] = static_cast<float>(place * kXMax);
        samples.y[i] = static_cast<float>(isPowerOfTen ? std::pow(10.0, level / kUnitsOfDecade) : level);
    }
    return samples;
}

Samples samplesFor(const Options& options)
{
    if (options.config == "empty")
        return {{static_cast<float>(kXMin), static_cast<float>(kXMax)}, {0.0F, 0.0F}};
    return noisyLine(options.sampleCount, options.config == "log");
}

double peakMemoryInMegabytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024.0;
}

/// The graph and the image that it is drawn into.
class Plot {
public:
    Plot(Samples samples, bool isLogarithmic)
        : m_surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, kWidth, kHeight))
        , m_target(cairo_create(m_surface.get()))
        , m_graph(TOLVGraph::graph())
    {
        cairo::setUpwardCoordinates(m_target.get(), kHeight, 1.0);
        m_graph->addGraphData(
            TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents(std::move(samples.x)), TOLVRealVector::vectorWithComponents(std::move(samples.y)), kLineColor));
        if (isLogarithmic)
            m_graph->setVerticalAxis(std::make_shared<TOLVLogarithmicAxis>());
        const auto onAxis = [&](double y) { return isLogarithmic ? std::pow(10.0, y / kUnitsOfDecade) : y; };
        m_graph->extents()->setY(TOLVAxisExtents::extentsWithMin(onAxis(kYMin), onAxis(kYMax)));
    }

    void show(double xMin, double xMax) { m_graph->extents()->setX(TOLVAxisExtents::extentsWithMin(xMin, xMax)); }

    void draw()
    {
        const Rect rect{0.0, 0.0, kWidth, kHeight};
        cairo::CairoContext context(m_target.get());
        const CurrentContextScope scope(context);
        context.fill(rect, Color::whiteColor());
        m_graph->drawInRect(rect);
    }

    /// The share of the pixels that have the line's colour, also where it is blended with white.
    [[nodiscard]] double inkShare() const
    {
        cairo_surface_flush(m_surface.get());
        const unsigned char* row = cairo_image_surface_get_data(m_surface.get());
        std::size_t inked = 0;
        for (int y = 0; y < kHeight; ++y, row += cairo_image_surface_get_stride(m_surface.get())) {
            for (int x = 0; x < kWidth; ++x) {
                std::uint32_t pixel = 0;
                std::memcpy(&pixel, row + sizeof pixel * static_cast<std::size_t>(x), sizeof pixel);
                if (static_cast<int>(pixel & 255U) - static_cast<int>((pixel >> 16U) & 255U) > kInkDifference)
                    ++inked;
            }
        }
        return static_cast<double>(inked) / (static_cast<double>(kWidth) * kHeight);
    }

    void write(const std::string& file) const
    {
        const cairo_status_t status = cairo_surface_write_to_png(m_surface.get(), file.c_str());
        if (status != CAIRO_STATUS_SUCCESS)
            std::fprintf(stderr, "%s: %s\n", file.c_str(), cairo_status_to_string(status));
    }

private:
    cairo::SurfacePointer m_surface;
    cairo::ContextPointer m_target;
    std::shared_ptr<TOLVGraph> m_graph;
};

class Report {
public:
    explicit Report(const Options& options) : m_options(options) {}

    void value(const char* measure, double value) const { line(measure, value, 1, std::nullopt); }

    /// Repeats the frame, which is given its number, until the repetitions or the budget are used up.
    template <typename Frame>
    void median(const char* measure, Frame frame) const
    {
        const auto begin = Clock::now();
        std::vector<double> milliseconds;
        for (int i = 0; i < m_options.repetitions && (i == 0 || secondsSince(begin) < m_options.budgetSeconds); ++i) {
            const auto start = Clock::now();
            frame(i);
            milliseconds.push_back(secondsSince(start) * 1e3);
        }
        line(measure, medianOf(milliseconds), static_cast<int>(milliseconds.size()), *std::min_element(milliseconds.begin(), milliseconds.end()));
    }

private:
    void line(const char* measure, double value, int repetitions, std::optional<double> least) const
    {
        std::printf(R"({"peer":"tolvgraphing","version":"%s","config":"%s","n":%zu,"measure":"%s","value":%.6g,"reps":%d)", TOLV_VERSION, m_options.config.c_str(),
            m_options.sampleCount, measure, value, repetitions);
        if (least)
            std::printf(R"(,"min":%.6g)", *least);
        std::printf("}\n");
        std::fflush(stdout);
    }

    const Options& m_options;
};

void measure(const Options& options)
{
    // As in any program: at its start. The list of fonts is read meanwhile.
    installDesktopTextSystem();
    const Report report(options);
    Samples samples = samplesFor(options);
    const double baseMemory = peakMemoryInMegabytes();

    const auto start = Clock::now();
    Plot plot(std::move(samples), options.config == "log");
    plot.show(kXMin, kXMax);
    plot.draw();
    report.value("cold", secondsSince(start) * 1e3);

    report.median("warm", [&](int) { plot.draw(); });
    if (!options.png.empty())
        plot.write(options.png);
    report.value("ink", plot.inkShare());

    const double span = kXMax - kXMin;
    report.median("pan", [&](int step) {
        const double moved = span * 1e-4 * (step + 1);
        plot.show(kXMin + moved, kXMax + moved);
        plot.draw();
    });

    const double low = (kXMin + kXMax) / 2.0 - span * 0.005;
    const double high = (kXMin + kXMax) / 2.0 + span * 0.005;
    // The jump to the window is none of its frames.
    plot.show(low, high);
    plot.draw();
    report.median("zoom", [&](int step) {
        const double moved = span * 1e-5 * (step + 1);
        plot.show(low + moved, high + moved);
        plot.draw();
    });
    if (!options.png.empty())
        plot.write(options.png + ".zoom.png");
    report.value("rss_base_mb", baseMemory);
    report.value("rss_peak_mb", peakMemoryInMegabytes());
}

/// The whole text as a number from `low` to `high`.
std::optional<double> numberWithin(std::string_view text, double low, double high)
{
    double number = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || !(number >= low) || !(number <= high))
        return std::nullopt;
    return number;
}

/// Takes an option's value; an explanation when it is not one.
std::optional<std::string> setOption(Options& options, std::string_view name, std::string_view value)
{
    const auto wrong = [&](std::string_view expected) { return std::string(name) + " " + std::string(value) + ": expected " + std::string(expected); };
    if (name == "--config") {
        options.config = value;
        return value == "default" || value == "log" || value == "empty" ? std::nullopt : std::optional(wrong("default, log or empty"));
    }
    if (name == "--png") {
        options.png = value;
        return std::nullopt;
    }
    if (name == "--n") {
        const auto number = numberWithin(value, 2.0, kMostSamples);
        options.sampleCount = static_cast<std::size_t>(number.value_or(0.0));
        return number ? std::nullopt : std::optional(wrong("a number of samples from 2 on"));
    }
    if (name == "--reps") {
        const auto number = numberWithin(value, 1.0, 1e6);
        options.repetitions = static_cast<int>(number.value_or(0.0));
        return number ? std::nullopt : std::optional(wrong("a number of repetitions from 1 to 1000000"));
    }
    if (name == "--budget") {
        const auto number = numberWithin(value, 0.0, 1e6);
        options.budgetSeconds = number.value_or(0.0);
        return number ? std::nullopt : std::optional(wrong("seconds from 0 to 1000000"));
    }
    return "unknown option " + std::string(name) + ": expected --config, --n, --reps, --budget or --png";
}

} // namespace

int main(int argumentCount, char** argumentValues)
{
    const std::span arguments(argumentValues, static_cast<std::size_t>(argumentCount));
    Options options;
    for (std::size_t i = 1; i < arguments.size(); i += 2) {
        const auto problem = i + 1 < arguments.size() ? setOption(options, arguments[i], arguments[i + 1]) : std::string(arguments[i]) + ": expected a value after it";
        if (problem) {
            std::fprintf(stderr, "%s\n", problem->c_str());
            return 2;
        }
    }
    measure(options);
    return 0;
}
