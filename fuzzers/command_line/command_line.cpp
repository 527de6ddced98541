#include "../support/FuzzTarget.h"
#include "../support/InputReader.h"
#include "../support/PrivateFolder.h"

#include <apps/tolvgraph/OptionParser.h>
#include <apps/tolvgraph/Program.h>
#include <desktop/output/GraphicsOutput.h>

#include <algorithm>
#include <map>
#include <sstream>
#include <vector>

namespace TOLVGraphing::fuzzing {
namespace {

/// More would take seconds, which say nothing.
constexpr double kMostPixels = 1e6;
constexpr std::size_t kMostFiles = 6;
constexpr char kFileStart = '\x1E';

/// The arguments of a run, one a line up to an empty line, and the files behind that: each begins with the byte 0x1E and a line of its name.
struct Script {
    std::vector<std::string> arguments;
    std::map<std::string, std::string> files;

    explicit Script(std::string_view text)
    {
        while (!text.empty()) {
            const std::string_view line = takenUpTo('\n', text);
            if (line.empty())
                break;
            arguments.push_back(withinFolder(line));
        }
        takenUpTo(kFileStart, text);
        while (!text.empty() && files.size() < kMostFiles) {
            const std::string name = fileName(takenUpTo('\n', text));
            files[name] = takenUpTo(kFileStart, text);
        }
    }

private:
    static std::string_view takenUpTo(char end, std::string_view& text)
    {
        const std::string_view taken = text.substr(0, text.find(end));
        text.remove_prefix(std::min(text.size(), taken.size() + 1));
        return taken;
    }

    /// Without its slashes, and without a NUL, an argument names nothing but files of the folder that the program runs in.
    static std::string withinFolder(std::string_view argument)
    {
        std::string result(argument);
        std::replace(result.begin(), result.end(), '/', '_');
        std::erase(result, '\0');
        return result;
    }

    static std::string fileName(std::string_view text)
    {
        std::string name(text.substr(0, 40));
        std::erase_if(name, [](char character) { return !((character >= 'a' && character <= 'z') || (character >= '0' && character <= '9') || character == '.'); });
        return name.find_first_not_of('.') == std::string::npos ? "stdin" : name;
    }
};

const PrivateFolder& folder()
{
    static const PrivateFolder made;
    return made;
}

/// The process is in the private folder until the end of the scope, and keeps nothing in the user's.
class InFolder {
public:
    InFolder() : m_former(::open(".", O_RDONLY | O_DIRECTORY | O_CLOEXEC))
    {
        require(m_former >= 0 && ::chdir(folder().path().c_str()) == 0 && ::setenv("TOLVGRAPHING_NO_CACHE", "1", 1) == 0, "the private folder can be entered");
    }
    ~InFolder()
    {
        require(::fchdir(m_former) == 0, "the private folder can be left");
        ::close(m_former);
    }
    InFolder(const InFolder&) = delete;
    InFolder& operator=(const InFolder&) = delete;

private:
    int m_former;
};

void provide(const Script& script)
{
    folder().clear();
    for (const auto& [name, content] : script.files)
        static_cast<void>(folder().write(name, std::as_bytes(std::span(content))));
    const int input = ::open(script.files.contains("stdin") ? folder().path("stdin").c_str() : "/dev/null", O_RDONLY | O_CLOEXEC);
    require(input >= 0 && ::dup2(input, STDIN_FILENO) == STDIN_FILENO, "standard input can be provided");
    ::close(input);
}

/// The options ask for images of more pixels than is worth the time.
bool takesLong(const Script& script)
{
    std::ostringstream ignored;
    const app::ParsedOptions parsed = app::parseOptions(script.arguments, ignored, ignored);
    if (!parsed.options)
        return false;
    const app::Options& options = *parsed.options;
    const bool hasImage = std::ranges::any_of(options.outputs, [](const std::string& output) { return isImage(*outputKindForSuffix(output)); });
    return options.outputs.size() > 8 || options.files.size() > 8 || (hasImage && options.size.width * options.size.height * options.scale * options.scale > kMostPixels);
}

/// Paths are made of numbers that a reader of the format knows: no infinity and nothing that is no number.
bool hasSoundPaths(std::string_view document)
{
    constexpr std::string_view kStart = " d=\"";
    for (std::size_t place = document.find(kStart); place != std::string_view::npos; place = document.find(kStart, place)) {
        place += kStart.size();
        const std::string_view data = document.substr(place, document.find('"', place) - place);
        if (data.find_first_not_of("MLCQZ0123456789.-+e ,") != std::string_view::npos)
            return false;
    }
    return true;
}

/// A whole picture or layout, by how such files begin and end.
bool isWhole(const std::string& name, const std::string& content)
{
    if (name.ends_with("json"))
        return content.starts_with("{") && content.ends_with("}\n");
    switch (outputKindForSuffix(name).value()) {
    case OutputKind::PDF: return content.starts_with("%PDF-") && content.ends_with("%%EOF\n");
    case OutputKind::PostScript:
    case OutputKind::EPS: return content.starts_with("%!PS-Adobe") && content.ends_with("%%EOF\n");
    case OutputKind::SVG: return content.starts_with("<?xml") && content.ends_with("</svg>\n") && hasSoundPaths(content);
    case OutputKind::PNG: return content.starts_with("\x89PNG") && content.ends_with("IEND\xAE\x42\x60\x82");
    case OutputKind::TIFF: return content.starts_with("II*") && content.size() > 8;
    }
    return false;
}

std::string lowerCase(std::string text)
{
    std::ranges::transform(text, text.begin(), [](char character) { return character >= 'A' && character <= 'Z' ? static_cast<char>(character + 32) : character; });
    return text;
}

/// Every file in the folder is one that was there before, as it was, or a whole output.
void requireWholeFiles(const Script& script)
{
    for (const auto& entry : std::filesystem::directory_iterator(folder().path())) {
        const std::string name = entry.path().filename().string();
        const std::string content = folder().read(name);
        const auto former = script.files.find(name);
        if (former != script.files.end() && former->second == content)
            continue;
        const std::string suffix = lowerCase(name);
        require(suffix.ends_with(".json") || outputKindForSuffix(name), "nothing is left behind but outputs");
        require(isWhole(suffix, content), "an output is whole");
    }
}

} // namespace

Verdict tryInput(std::span<const std::byte> input)
{
    const Script script(textOf(input));
    provide(script);
    if (takesLong(script))
        return Verdict::accepted;
    std::ostringstream out;
    std::ostringstream error;
    const InFolder inFolder;
    const int status = app::runProgram(script.arguments, out, error);
    require(status >= 0 && status <= 2, "the exit status is 0, 1 or 2");
    require((status == 0 && error.str().empty()) || error.str().starts_with("tolvgraph: "), "a failure is explained, and messages name the program");
    requireWholeFiles(script);
    return status == 0 ? Verdict::accepted : Verdict::refused;
}

} // namespace TOLVGraphing::fuzzing
