// Turns the C++ blocks of a page of the manual into sources: each program, and all blocks of statements together. Usage: write_blocks PAGE.md FOLDER

#include "ManualPage.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <sstream>
#include <stdexcept>

using namespace TOLVGraphing::testing_support;

namespace {

/// A block's lines that include a header, and the others.
struct Source {
    std::string includes;
    std::string code;
};

Source sourceOf(const ManualBlock& block)
{
    Source source;
    std::istringstream lines(block.text);
    for (std::string line; std::getline(lines, line);)
        (line.starts_with("#include") ? source.includes : source.code) += line + "\n";
    return source;
}

std::string spaceOf(const ManualBlock& block)
{
    return "line_" + std::to_string(block.line);
}

std::string registrationOf(const ManualBlock& block, const std::string& function)
{
    return "const TOLVGraphing::testing_support::BlockRegistration registration(\"" + block.page + ":" + std::to_string(block.line) + "\", " + function + ");\n";
}

std::string replaced(std::string text, const std::string& found, const std::string& replacement)
{
    const auto place = text.find(found);
    return place == std::string::npos ? text : text.replace(place, found.size(), replacement);
}

/// The program's main function, which has to be its last one, becomes a function that is registered.
std::string programText(const ManualBlock& block)
{
    const Source source = sourceOf(block);
    std::string code = replaced(source.code, "int main(", "int program(");
    code.insert(code.rfind("\n}"), "\n    return 0;");
    const bool takesArguments = code.find("int program()") == std::string::npos;
    const std::string call = takesArguments ? "[](int count, char** arguments) { return program(count, arguments); }" : "[](int, char**) { return program(); }";
    return source.includes + "\n#include <tests/manual/Block.h>\n\nnamespace {\nnamespace " + spaceOf(block) + " {\n" + code + registrationOf(block, call) + "}\n}\n";
}

/// What the comment above a block may name, and how each is made.
const std::map<std::string, std::string>& givenThings()
{
    static const std::map<std::string, std::string> kThings{
        {"graph", "const auto graph = given::graph();"},
        {"sheet", "GraphSheet sheet(graph);"},
        {"series", "const auto series = graph->graphData().front();"},
        {"view", "const auto view = given::view(graph);"},
        {"x", "std::vector<float> x = given::abscissae();"},
        {"y", "std::vector<float> y = given::ordinates();"},
        {"window", "given::Application application; QMainWindow window;"},
        {"widget", "given::Application application; GraphWidget widget; widget.addSeries(given::abscissae(), given::ordinates(), \"Voltage\");"},
        {"table", "input::MeasurementTable table = given::table();"},
    };
    return kThings;
}

std::string statementsText(const ManualBlock& block, const Source& source)
{
    std::string text = "namespace " + spaceOf(block) + " {\nint run(int, char**)\n{\n";
    std::string after;
    for (const std::string& name : block.given) {
        const auto thing = givenThings().find(name);
        if (thing == givenThings().end())
            throw std::runtime_error(block.page + ":" + std::to_string(block.line) + ": found the name " + name
                + " in the comment above the block, expected one that tests/manual/write_blocks.cpp knows");
        text += "    " + thing->second + "\n";
        if (name == "graph")
            after = "    given::draw(graph);\n";
        if (name == "widget")
            after = "    given::show(widget);\n";
        if (name == "window")
            after = "    given::show(window);\n";
    }
    return text + source.code + after + "    return 0;\n}\n" + registrationOf(block, "run") + "}\n";
}

void write(const std::filesystem::path& path, const std::string& text)
{
    std::ofstream file(path);
    file << text;
    if (!file.flush())
        throw std::runtime_error(path.string() + ": cannot be written");
}

void writeBlocks(const std::string& page, const std::filesystem::path& folder)
{
    const std::string name = std::filesystem::path(page).stem().string();
    std::string includes;
    std::string statements;
    int programs = 0;
    bool needsQt = false;
    for (const ManualBlock& block : blocksOfPage(page)) {
        if (block.language != "cpp")
            continue;
        if (block.isProgram()) {
            write(folder / (name + "_program_" + std::to_string(++programs) + ".cpp"), programText(block));
            continue;
        }
        const Source source = sourceOf(block);
        includes += source.includes;
        statements += statementsText(block, source);
        for (const std::string& given : block.given)
            needsQt = needsQt || given == "widget" || given == "window";
    }
    const std::string support = std::string("#include <tests/manual/Block.h>\n#include <tests/manual/Given.h>\n") + (needsQt ? "#include <tests/manual/GivenWindow.h>\n" : "");
    write(folder / (name + "_statements.cpp"),
        includes + support + "using namespace TOLVGraphing;\nnamespace given = TOLVGraphing::testing_support::given;\nnamespace {\n" + statements + "}\n");
}

} // namespace

int main(int argumentCount, char** arguments)
{
    if (argumentCount != 3) {
        std::cerr << "usage: write_blocks PAGE.md FOLDER\n";
        return 2;
    }
    try {
        writeBlocks(arguments[1], arguments[2]);
        return 0;
    } catch (const std::exception& problem) {
        std::cerr << "write_blocks: " << problem.what() << "\n";
        return 1;
    }
}
