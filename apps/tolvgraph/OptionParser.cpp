#include "OptionParser.h"

#include "ArgumentProblems.h"

#include <apps/plotting/OptionRules.h>
#include <apps/plotting/OptionValues.h>
#include <desktop/input/RawNumberReader.h>
#include <desktop/output/GraphicsOutput.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <iterator>
#include <ostream>

namespace TOLVGraphing::app {

namespace {

constexpr const char* kDescription = "Draws graphs of measurements. Reads delimited text (CSV and its relatives), sound files, .npy arrays and raw numbers (.f32, .f64), and "
                                     "writes PDF, PS, EPS, SVG, PNG and TIFF.";

constexpr const char* kFooter = R"(FILE may be - for standard input. The first column is x and every other column of numbers a series, unless --x and --y say otherwise; a single
column, the channels of raw numbers and series beside a first column of words are drawn against the row number. Dates in the x column (2026-11-21,
21.11.2026, 2026-11-21 12:30:15) are told apart to the second over four months from the first day on.

Raw numbers are floats of four (.f32) or eight (.f64) bytes, the lowest byte first, and nothing else. The extremes of .f32 and .npy columns with millions
of numbers are kept in ~/.cache/tolvgraphing/extremes (or where XDG_CACHE_HOME says), so that the file opens at once the next time;
TOLVGRAPHING_NO_CACHE=1 in the environment keeps nothing.

An axis of categories (--draw bar and --draw line bring one along) gives every row of the file the same room and names it by the x column, words or not;
gaps stay empty. A logarithmic axis shows the samples that are greater than zero.

Examples:
  tolvgraph recording.wav -o recording.png
  tolvgraph weather.csv --x date --y temp_max,temp_min --legend -o weather.pdf
  tolvgraph scope.csv --x-range -0.0001:0.0001 --marker 0 -o scope.svg -o scope.png
  tolvgraph response.csv --x-axis log --x-range 20:20000 --x-format si -o response.svg
  tolvgraph sales.csv --draw bar --x year --y north,south --legend -o sales.pdf
  tolvgraph spectrum.csv --draw impulse --y-axis log --y-format scientific -o spectrum.png
  tolvgraph scope.csv --layout scope.json
)";

/// The options' texts as they arrive, before they are understood.
struct RawOptions {
    std::string size;
    std::string scale;
    std::string y;
    std::string channels;
    std::string xRange;
    std::string yRange;
    std::string draw;
    std::string xAxis;
    std::string yAxis;
    std::string xFormat;
    std::string yFormat;
    std::string layout;
    std::string colors;
    std::string patterns;
    std::string thicknesses;
    std::string margin;
};

void declare(CLI::App& command, Options& options, RawOptions& raw)
{
    command.add_option("FILE", options.files, "Measurement files to draw into one graph")->type_name("");
    command.add_option("-o,--output", options.outputs, "Write a picture; the suffix says the kind: .pdf .ps .eps .svg .png .tif .tiff")
        ->type_name("OUT")
        ->take_all()
        ->allow_extra_args(false);
    command.add_option("--size", raw.size, "Size in points, 1/72 inch (default 640x400)")->type_name("WxH");
    command.add_option("--scale", raw.scale, "Pixels a point in PNG and TIFF (default 2)")->type_name("S");
    command.add_option("--x", options.x, "Column of x: a name or a number counted from 1, or index for the row number")->type_name("COL");
    command.add_option("--y", raw.y, "Columns to draw, separated by commas")->type_name("COL,...");
    command.add_option("--channels", raw.channels, "Channels side by side in .f32 and .f64 files, each a column (default 1)")->type_name("N");
    command.add_option("--x-range", raw.xRange, "Visible x range; an end left out fits the data, dates are allowed")->type_name("A:B");
    command.add_option("--y-range", raw.yRange, "Visible y range (default: the data and a twentieth more on either side)")->type_name("A:B");
    command.add_option("--title", options.title, "Title above the graph")->type_name("TEXT");
    command.add_option("--x-label", options.xLabel, "Title of the x axis (default: the column's name; an empty text for none)")->type_name("TEXT");
    command.add_option("--y-label", options.yLabel, "Title of the y axis (default: the column's name where there is one series)")->type_name("TEXT");
    command
        .add_option("--draw", raw.draw,
            "How to draw: curve (with values at markers), plain-curve, dotted (evenly spaced), x (crosses), impulse (lines from below), bar or line (values of categories); "
            "default curve, or as --x-axis needs it")
        ->type_name("KIND");
    command.add_option("--x-axis", raw.xAxis, "Scale of x: linear, log, or categories with room for each row, bar or line (default linear, or as --draw needs it)")
        ->type_name("KIND");
    command.add_option("--y-axis", raw.yAxis, "Scale of y: linear or log (default linear)")->type_name("KIND");
    command.add_option("--categories", options.categoryColumn, "Column of the categories' texts, numbers or words (default: that of x), or index for the row number")
        ->type_name("COL");
    command.add_option("--x-format", raw.xFormat, "Numbers of x: decimal, adaptive, si (2.5k), scientific, date (default adaptive, and date for dates)")->type_name("STYLE");
    command.add_option("--y-format", raw.yFormat, "Numbers of y, likewise (default adaptive)")->type_name("STYLE");
    command.add_option("--color", raw.colors, "Colours of the series in turn, hexadecimal")->type_name("RRGGBB,...");
    command.add_option("--pattern", raw.patterns, "Line patterns of the series in turn: solid, dashed, dash-dot, dotted")->type_name("P,...");
    command.add_option("--thickness", raw.thicknesses, "Line widths of the series in turn, in points (default 1)")->type_name("T,...");
    command.add_option("--marker", options.markers, "Mark an x value; may be given several times")->type_name("VALUE")->take_all()->allow_extra_args(false);
    command.add_option("--layout", raw.layout, "Write where everything stands, for other programs; the suffix is .json")->type_name("OUT");
    command.add_option("--margin", raw.margin, "Space around the data area in points (default: as the labels need)")->type_name("T,L,B,R");
    command.add_flag("--legend", options.legend, "Name the series below the graph")->disable_flag_override();
    command.add_flag("--list-columns", options.listsColumns, "List the columns of the files instead of drawing, or before it")->disable_flag_override();
    command.set_version_flag("--version", std::string("tolvgraph ") + TOLVGRAPHING_VERSION, "Print the version");
    command.set_help_flag("-h,--help", "Print this help");
}

template <typename Value>
std::vector<Value> parsedList(const std::string& option, const std::string& text, Value (*parse)(const std::string&, const std::string&))
{
    std::vector<Value> values;
    for (const std::string& part : parseList(option, text))
        values.push_back(parse(option, part));
    return values;
}

double parseThickness(const std::string& option, const std::string& text)
{
    return parsePositive(option, text, kLargestThickness);
}

void checkDrawingOnAxis(const RawOptions& raw, const Options& options)
{
    if (canDrawOnAxis(options.drawing, options.xAxis))
        return;
    if (options.drawing == DrawingKind::Line)
        throw UsageError("--x-axis", raw.xAxis, "line, the axis that --draw line needs");
    if (options.drawing == DrawingKind::Bar)
        throw UsageError("--x-axis", raw.xAxis, "bar or line, the axes that --draw bar needs");
    throw UsageError("--draw", raw.draw, "bar, line, x or impulse with --x-axis " + raw.xAxis + ", whose categories it does not match");
}

/// Axes, drawing and categories, which depend on one another.
void interpretAxes(const CLI::App& command, const RawOptions& raw, Options& options)
{
    const auto given = [&](const char* name) { return command.count(name) > 0; };
    if (given("--x-axis"))
        options.xAxis = parseXAxis("--x-axis", raw.xAxis);
    if (given("--y-axis"))
        options.yAxis = parseYAxis("--y-axis", raw.yAxis);
    options.drawing = given("--draw") ? parseDrawing("--draw", raw.draw) : usualDrawing(options.xAxis);
    if (!given("--x-axis"))
        options.xAxis = usualXAxis(options.drawing);
    checkDrawingOnAxis(raw, options);
    if (options.categoryColumn && !options.hasCategories())
        throw UsageError("--categories", *options.categoryColumn, "an axis of categories with it: --x-axis bar or line, or --draw bar or line");
    if (given("--x-format"))
        options.xFormat = parseNumberStyle("--x-format", raw.xFormat);
    if (given("--y-format"))
        options.yFormat = parseNumberStyle("--y-format", raw.yFormat);
    if (options.xFormat && options.hasCategories())
        throw UsageError("--x-format", raw.xFormat, "an axis of numbers with it, --x-axis linear or log: categories are texts");
}

void interpret(const CLI::App& command, const RawOptions& raw, Options& options)
{
    const auto given = [&](const char* name) { return command.count(name) > 0; };
    interpretAxes(command, raw, options);
    if (given("--size"))
        options.size = parseSize("--size", raw.size);
    if (given("--scale"))
        options.scale = parsePositive("--scale", raw.scale, kLargestScale);
    if (given("--y"))
        options.y = parseList("--y", raw.y);
    if (given("--channels"))
        options.channels = parseCount("--channels", raw.channels, input::kMaximumChannelCount);
    if (given("--x-range"))
        options.xRange = parseRange("--x-range", raw.xRange);
    if (given("--y-range"))
        options.yRange = parseRange("--y-range", raw.yRange);
    if (given("--color"))
        options.colors = parsedList("--color", raw.colors, &parseColor);
    if (given("--pattern"))
        options.patterns = parsedList("--pattern", raw.patterns, &parsePattern);
    if (given("--thickness"))
        options.thicknesses = parsedList("--thickness", raw.thicknesses, &parseThickness);
    if (given("--margin"))
        options.margin = parseInsets("--margin", raw.margin);
    if (given("--layout"))
        options.layout = parseLayoutFile("--layout", raw.layout);
    if (options.files.empty())
        throw UsageError("FILE", "at least one measurement file, or - for standard input");
    if (given("--channels") && std::none_of(options.files.begin(), options.files.end(), input::hasRawNumberSuffix))
        throw UsageError("--channels", raw.channels, "a FILE with it that ends in .f32 or .f64: other files say themselves how many they have");
    if (!options.needsGraph() && !options.listsColumns)
        throw UsageError("--output", "a file to write, for example -o graph.png, or --list-columns");
    for (const std::string& output : options.outputs) {
        if (!outputKindForSuffix(output))
            throw UsageError("--output", output, "a name that ends in .pdf, .ps, .eps, .svg, .png, .tif or .tiff");
    }
}

/// The option of this name as it is written ("--size", "-o"); null for everything else, "-" among it.
const CLI::Option* optionNamed(const CLI::App& command, const std::string& argument)
{
    return argument.size() > 1 && argument.starts_with("-") ? command.get_option_no_throw(argument) : nullptr;
}

bool takesValue(const CLI::App& command, const std::string& argument)
{
    const CLI::Option* option = optionNamed(command, argument);
    return option && option->get_items_expected_max() > 0;
}

/// True for a value that the parser would take for options: one that starts with "-" and is none.
bool looksLikeOption(const CLI::App& command, const std::string& value)
{
    return value.starts_with("-") && value != "--" && !optionNamed(command, value.substr(0, value.find('=')));
}

/// The arguments in forms that the parser understands as they are meant: "--title=" is an empty title, and the value of "--x-range -.5:.5" is no group of short options.
std::vector<std::string> unambiguous(const CLI::App& command, const std::vector<std::string>& arguments)
{
    std::vector<std::string> result;
    const auto end = std::find(arguments.begin(), arguments.end(), "--");
    for (auto argument = arguments.begin(); argument != end; ++argument) {
        const auto value = std::next(argument);
        const std::string name = argument->substr(0, argument->find('='));
        if (argument->ends_with('=') && name.size() + 1 == argument->size() && takesValue(command, name)) {
            result.insert(result.end(), {name, ""});
        } else if (takesValue(command, *argument) && value != end && looksLikeOption(command, *value)) {
            result.push_back("--" + optionNamed(command, *argument)->get_lnames().front() + "=" + *value);
            ++argument;
        } else {
            result.push_back(*argument);
        }
    }
    result.insert(result.end(), end, arguments.end());
    return result;
}

} // namespace

ParsedOptions parseOptions(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& error)
{
    constexpr int kUsage = 2;
    Options options;
    RawOptions raw;
    CLI::App command(kDescription, "tolvgraph");
    command.footer(kFooter);
    declare(command, options, raw);
    const auto words = unambiguous(command, arguments);
    try {
        // The parser takes them from the end.
        command.parse(std::vector<std::string>(words.rbegin(), words.rend()));
        interpret(command, raw, options);
        return {options, 0};
    } catch (const CLI::Success& success) {
        command.exit(success, out, error);
        return {std::nullopt, 0};
    } catch (const CLI::ParseError& problem) {
        error << "tolvgraph: " << explanationOf(problem, command, words) << "\nTry 'tolvgraph --help'.\n";
    } catch (const UsageError& problem) {
        error << "tolvgraph: " << problem.what() << "\nTry 'tolvgraph --help'.\n";
    }
    return {std::nullopt, kUsage};
}

} // namespace TOLVGraphing::app
