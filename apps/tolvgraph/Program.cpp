#include "Program.h"

#include "ColumnListing.h"
#include "OptionParser.h"
#include "ProgressLine.h"

#include <apps/plotting/GraphBuilder.h>
#include <apps/plotting/OptionValues.h>
#include <apps/plotting/Pictures.h>
#include <apps/plotting/TableSeries.h>
#include <desktop/input/MappedFile.h>
#include <desktop/input/MeasurementReader.h>
#include <desktop/layout/LayoutJson.h>
#include <desktop/output/AtomicFile.h>
#include <desktop/text/PangoTextSystem.h>

#include <cerrno>
#include <exception>
#include <new>
#include <ostream>
#include <span>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace TOLVGraphing::app {

namespace {

constexpr int kSuccess = 0;
constexpr int kFailure = 1;
constexpr int kUsage = 2;

/// One run of the program, which writes to these streams.
class Run {
public:
    Run(const Options& options, std::ostream& out, std::ostream& error) : m_options(options), m_out(out), m_error(error) {}

    void run() const;

private:
    void warn(const std::string& text) const;
    [[nodiscard]] std::vector<FileSeries> readSeries() const;
    void draw(const std::vector<FileSeries>& files) const;

    const Options& m_options;
    std::ostream& m_out;
    std::ostream& m_error;
};

void say(std::ostream& error, const std::string& text)
{
    error << "tolvgraph: " << text << "\n";
}

/// Brings to standard output what was printed so far. Throws where it cannot be written: a full disk must not pass for success.
void flush(std::ostream& out)
{
    if (!out.flush())
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

void writeLayout(GraphSheet& sheet, const std::vector<FileSeries>& files, const Options& options)
{
    const std::string text = layoutJson(sheet, options.size);
    requireWholeFiles(files);
    writeFileAtomically(*options.layout, std::as_bytes(std::span(text)));
}

void Run::run() const
{
    requirePossiblePictures(m_options);
    const std::vector<FileSeries> files = readSeries();
    if (!m_options.needsGraph())
        return;
    try {
        draw(files);
    } catch (...) {
        // Zeros in place of samples explain whatever else is wrong.
        requireWholeFiles(files);
        throw;
    }
}

std::vector<FileSeries> Run::readSeries() const
{
    std::vector<FileSeries> files;
    Options options = m_options;
    for (const std::string& file : options.files) {
        // Only a graph needs the texts of categories.
        input::MeasurementTable table = readFile(file, options.needsGraph() ? readSettings(options) : readSettingsWithoutTexts(options));
        for (const std::string& note : notesOnRaggedRows(table))
            warn(note);
        if (m_options.listsColumns) {
            const std::string listing = columnListing(table);
            if (const auto mapped = table.mappedFile())
                mapped->requireAllBytes(file);
            m_out << listing;
            flush(m_out);
        }
        if (!m_options.needsGraph())
            continue;
        files.push_back(seriesOfTable(std::move(table), options));
        keepDateOrigin(files.back(), options);
        for (const std::string& note : files.back().selection.notes)
            warn(std::string(file).append(": ").append(note));
    }
    return files;
}

void Run::draw(const std::vector<FileSeries>& files) const
{
    installDesktopTextSystem();
    std::vector<std::string> notes;
    GraphSheet sheet = buildSheet(files, m_options, notes);
    for (const std::string& note : notes)
        warn(note);
    for (const std::string& output : m_options.outputs)
        writePicture(sheet, files, m_options, output);
    if (m_options.layout)
        writeLayout(sheet, files, m_options);
}

void Run::warn(const std::string& text) const
{
    say(m_error, text);
}

} // namespace

int runProgram(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& error)
{
    try {
        const ParsedOptions parsed = parseOptions(arguments, out, error);
        if (!parsed.options) {
            flush(out);
            return parsed.status;
        }
        Run(*parsed.options, out, error).run();
        return kSuccess;
    } catch (const UsageError& problem) {
        say(error, problem.what());
        return kUsage;
    } catch (const std::bad_alloc&) {
        say(error, "found too little memory for these data, expected a smaller file or more memory");
    } catch (const std::exception& problem) {
        say(error, problem.what());
    }
    return kFailure;
}

} // namespace TOLVGraphing::app
