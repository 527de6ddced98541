// A cumulative decay waterfall of a recording: in a window, or without one as a PNG file.
#include "Decay.h"
#include "OffscreenScene.h"
#include "WaterfallScene.h"
#ifdef WATERFALL_HAS_WINDOW
#include "WaterfallWindow.h"
#endif

#include <desktop/input/MeasurementReader.h>
#include <desktop/output/DesktopStringRasterizer.h>
#include <desktop/text/PangoTextSystem.h>
#include <opengl/EpoxyOpenGLSystem.h>

#include <CLI/CLI.hpp>

#include <cmath>
#include <exception>
#include <filesystem>
#include <iostream>
#include <string>

namespace {

constexpr double kPixelsPerPoint = 2.0;

struct Options {
    std::string recording = "/usr/share/sounds/alsa/Front_Center.wav";
    std::string output;
    std::pair<int, int> size{640, 440};
    DecaySettings decay;
};

Decay decayOfRecording(const Options& options)
{
    const auto table = TOLVGraphing::input::readMeasurements(options.recording);
    if (!table.sampleRate || table.columns.size() < 2)
        throw std::runtime_error(options.recording + ": expected a sound file");
    return cumulativeDecay(table.columns[1].values, *table.sampleRate, options.decay);
}

void writeWaterfall(const Options& options, const Decay& decay, const std::string& title)
{
    const auto pixels = [](int points) { return static_cast<int>(std::lround(points * kPixelsPerPoint)); };
    writeScene(options.output, pixels(options.size.first), pixels(options.size.second), kPixelsPerPoint, [&](int width, int height) {
        WaterfallScene scene(decay, title);
        scene.draw(width, height, kPixelsPerPoint);
    });
    std::cout << options.output << "\n";
}

} // namespace

int main(int argumentCount, char** arguments)
{
    Options options;
    CLI::App command("Draws the cumulative spectral decay of a recording as a waterfall: in a window, or into a PNG file.", "waterfall");
    command.add_option("FILE.wav", options.recording, "The recording; its first channel is taken")->capture_default_str();
    command.add_option("-o,--output", options.output, "Write this PNG file, 2 pixels a point, instead of showing a window");
    command.add_option("--size", options.size, "Width and height of the picture in points")->check(CLI::Range(200, 2000))->capture_default_str();
    command.add_option("--start", options.decay.start, "Where the decay begins, in seconds; found where it is not given")->check(CLI::NonNegativeNumber);
    command.add_option("--length", options.decay.length, "How long the decay is, in seconds")->check(CLI::Range(0.001, 10.0))->capture_default_str();
    command.add_option("--slices", options.decay.sliceCount, "The number of curves")->check(CLI::Range(2, 500))->capture_default_str();
    CLI11_PARSE(command, argumentCount, arguments);
    try {
        TOLVGraphing::installDesktopTextSystem();
        TOLVGraphing::installDesktopStringRasterizer();
        TOLVGraphing::installEpoxyOpenGLSystem();
        const Decay decay = decayOfRecording(options);
        const std::string title = "Cumulative spectral decay: " + std::filesystem::path(options.recording).filename().string();
        if (!options.output.empty()) {
            writeWaterfall(options, decay, title);
            return 0;
        }
#ifdef WATERFALL_HAS_WINDOW
        return showWaterfall(argumentCount, arguments, decay, title);
#else
        std::cerr << "waterfall: this program was built without a window; expected --output FILE.png\n";
        return 2;
#endif
    } catch (const std::exception& problem) {
        std::cerr << "waterfall: " << problem.what() << "\n";
        return 1;
    }
}
