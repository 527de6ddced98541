#include "../support/Json.h"
#include "../support/VectorFile.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

using namespace TOLVGraphing::testing_support;

namespace {

/// The operations whose classes do not exist yet. Whoever writes such a class takes its operations out of this list and adds their tests.
const std::map<std::string, std::set<std::string>>& notYetCovered()
{
    static const std::map<std::string, std::set<std::string>> operations;
    return operations;
}

bool isListedAsUncovered(const std::string& file, const std::string& operation)
{
    const auto found = notYetCovered().find(file);
    return found != notYetCovered().end() && found->second.contains(operation);
}

} // namespace

TEST(ExpectedValues, EveryOperationHasATestOrIsListed)
{
    const auto files = vectorFileNames();
    ASSERT_FALSE(files.empty());
    for (const std::string& file : files) {
        for (const std::string& operation : VectorFile::named(file).operations()) {
            const bool tested = testedOperations().contains({file, operation});
            EXPECT_NE(tested, isListedAsUncovered(file, operation)) << file << " " << operation << (tested ? " is tested and listed" : " has no test");
        }
    }
}

TEST(ExpectedValues, EveryTestAndEveryListedOperationHasCases)
{
    for (const auto& [file, operation] : testedOperations())
        EXPECT_FALSE(VectorFile::named(file).casesOfOperation(operation).empty()) << file << " " << operation;
    for (const auto& [file, operations] : notYetCovered()) {
        for (const std::string& operation : operations)
            EXPECT_FALSE(VectorFile::named(file).casesOfOperation(operation).empty()) << file << " " << operation;
    }
}
