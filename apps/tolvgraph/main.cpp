#include "ColumnListing.h"
#include "OptionParser.h"
#include "ProgressLine.h"

#include <apps/plotting/GraphBuilder.h>
#include <apps/plotting/OptionValues.h>
#include <apps/plotting/Pictures.h>
#include <apps/plotting/ProgramStart.h>
#include <apps/plotting/TableSeries.h>
#include <desktop/input/MeasurementReader.h>
#include <desktop/layout/LayoutJson.h>
#include <desktop/output/AtomicFile.h>
#include <desktop/text/PangoTextSystem.h>

#include <cerrno>
#include <exception>
#include <iostream>
#include <new>
#include <span>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

using namespace TOLVGraphing;
using namespace TOLVGraphing::app;

namespace {

constexpr int kSuccess = 0;
constexpr int kFailure = 1;
constexpr int kUsage = 2;

void warn(const std::string& text)
{
    std::cerr << "tolvgraph: " << text << "\n";
}

/// Brings to standard output what was printed so far. Throws where it cannot be written: a full disk must not pass for success.
void flushOutput()
{
    if (!std::cout.flush())
        throw std::runtime_error("standard output: cannot be written (" + std::generic_category().message(errno) + "), expected a file or device with room");
}

input::MeasurementTable readFile(const std::string& file, input::ReadSettings settings)
{
    ProgressLine line(file);
    settings.progress = [&line](const input::ReadProgress& progress) {
        line.update(progress);
        return true;
    };
    return input::readMeasurements(file, settings);
}

std::vector<FileSeries> readSeries(const Options& options)
{
    std::vector<FileSeries> files;
    for (const std::string& file : options.files) {
        // Only a graph needs the texts of categories.
        input::MeasurementTable table = readFile(file, options.needsGraph() ? readSettings(options) : readSettingsWithoutTexts(options));
        for (const std::string& note : notesOnRaggedRows(table))
            warn(note);
        if (options.listsColumns) {
            std::cout << columnListing(table);
            flushOutput();
        }
        if (!options.needsGraph())
            continue;
        files.push_back(seriesOfTable(std::move(table), options));
        for (const std::string& note : files.back().selection.notes)
            warn(file + ": " + note);
    }
    return files;
}

void writeLayout(GraphSheet& sheet, const Options& options)
{
    const std::string text = layoutJson(sheet, options.size);
    writeFileAtomically(*options.layout, std::as_bytes(std::span(text)));
}

void run(const Options& options)
{
    const std::vector<FileSeries> files = readSeries(options);
    if (!options.needsGraph())
        return;
    installDesktopTextSystem();
    std::vector<std::string> notes;
    GraphSheet sheet = buildSheet(files, options, notes);
    for (const std::string& note : notes)
        warn(note);
    for (const std::string& output : options.outputs)
        writePicture(sheet, options, output);
    if (options.layout)
        writeLayout(sheet, options);
}

} // namespace

int main(int argumentCount, char** arguments)
{
    prepareProgram();
    try {
        const ParsedOptions parsed = parseOptions(argumentCount, arguments, std::cout, std::cerr);
        if (!parsed.options) {
            flushOutput();
            return parsed.status;
        }
        run(*parsed.options);
        return kSuccess;
    } catch (const UsageError& problem) {
        warn(problem.what());
        return kUsage;
    } catch (const std::bad_alloc&) {
        warn("found too little memory for these data, expected a smaller file or more memory");
    } catch (const std::exception& problem) {
        warn(problem.what());
    }
    return kFailure;
}
