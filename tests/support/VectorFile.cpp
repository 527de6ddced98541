#include "VectorFile.h"

#include <TestPaths.h>

#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>

namespace TOLVGraphing::testing_support {

namespace {

std::filesystem::path folder()
{
    return TOLV_TEST_VECTORS;
}

Json readFile(const std::string& name)
{
    const auto path = folder() / (name + ".json");
    std::ifstream stream(path, std::ios::binary);
    if (!stream)
        throw JsonError(path.string() + ": cannot be opened");
    const std::string text((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    try {
        return Json::parse(text);
    } catch (const JsonError& error) {
        throw JsonError(path.string() + ":" + error.what());
    }
}

std::set<std::pair<std::string, std::string>>& registry()
{
    static std::set<std::pair<std::string, std::string>> operations;
    return operations;
}

} // namespace

const VectorFile& VectorFile::named(const std::string& name)
{
    static std::map<std::string, std::unique_ptr<const VectorFile>> files;
    auto& file = files[name];
    if (!file)
        file = std::make_unique<const VectorFile>(name);
    return *file;
}

VectorFile::VectorFile(const std::string& name) : m_cases(readFile(name))
{
    for (const Json& element : m_cases.elements())
        static_cast<void>(element["name"].text() + element["input"]["op"].text() + std::to_string(element["expected"].members().size()));
}

std::vector<VectorCase> VectorFile::casesOfOperation(const std::string& operation) const
{
    std::vector<VectorCase> cases;
    for (const Json& element : m_cases.elements()) {
        if (element["input"]["op"].text() == operation)
            cases.push_back({element["name"].text(), element["input"], element["expected"]});
    }
    return cases;
}

std::set<std::string> VectorFile::operations() const
{
    std::set<std::string> names;
    for (const Json& element : m_cases.elements())
        names.insert(element["input"]["op"].text());
    return names;
}

void forEachCase(const std::string& file, const std::string& operation, const VectorTest& test)
{
    const auto cases = VectorFile::named(file).casesOfOperation(operation);
    EXPECT_FALSE(cases.empty()) << file << " has no case of " << operation;
    for (const VectorCase& testCase : cases) {
        SCOPED_TRACE(file + " " + operation + ": " + testCase.name);
        try {
            test(testCase);
        } catch (const std::exception& error) {
            ADD_FAILURE() << "unexpected exception: " << error.what();
        }
    }
}

std::set<std::string> vectorFileNames()
{
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder())) {
        if (entry.path().extension() == ".json")
            names.insert(entry.path().stem().string());
    }
    return names;
}

const std::set<std::pair<std::string, std::string>>& testedOperations()
{
    return registry();
}

TestedOperation::TestedOperation(const char* file, const char* operation)
{
    registry().emplace(file, operation);
}

} // namespace TOLVGraphing::testing_support
