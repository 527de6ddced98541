#pragma once

#include "Json.h"

#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace TOLVGraphing::testing_support {

/// One case of a file of expected values: what goes in and what has to come out.
struct VectorCase {
    std::string name;
    const Json& input;
    const Json& expected;
};

/// A file of expected values, read once per process. Throws JsonError, with the file's name, when it cannot be read or is not a list of cases.
class VectorFile {
public:
    /// The file of this name, without folder and suffix.
    [[nodiscard]] static const VectorFile& named(const std::string& name);

    explicit VectorFile(const std::string& name);

    /// The cases of one operation in the file's order.
    [[nodiscard]] std::vector<VectorCase> casesOfOperation(const std::string& operation) const;
    [[nodiscard]] std::set<std::string> operations() const;

private:
    Json m_cases;
};

using VectorTest = std::function<void(const VectorCase&)>;

/// Runs the test for each case of the operation, every failure marked with the case's name. An operation without a case, and an exception out of the test, are failures.
void forEachCase(const std::string& file, const std::string& operation, const VectorTest& test);

/// The names of the files of expected values, and the operations that have a test in this program.
[[nodiscard]] std::set<std::string> vectorFileNames();
[[nodiscard]] const std::set<std::pair<std::string, std::string>>& testedOperations();

/// Notes, before the tests run, that an operation has a test.
class TestedOperation {
public:
    TestedOperation(const char* file, const char* operation);
};

} // namespace TOLVGraphing::testing_support

/// Defines the test of one operation of a file; the body that follows is run for every case, which it sees as `testCase`.
#define EXPECTED_VALUES_TEST(file, operation)                                                                                                                                      \
    static void file##_##operation##_case(const TOLVGraphing::testing_support::VectorCase& testCase);                                                                              \
    static const TOLVGraphing::testing_support::TestedOperation file##_##operation##_tested(#file, #operation);                                                                    \
    TEST(file##_expected_values, operation)                                                                                                                                        \
    {                                                                                                                                                                              \
        TOLVGraphing::testing_support::forEachCase(#file, #operation, file##_##operation##_case);                                                                                  \
    }                                                                                                                                                                              \
    static void file##_##operation##_case(const TOLVGraphing::testing_support::VectorCase& testCase)
