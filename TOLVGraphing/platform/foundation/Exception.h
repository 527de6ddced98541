#pragma once

#include <TOLVMath/Export.h>

#include <stdexcept>
#include <string>

namespace TOLVGraphing {

/// A programming error that the caller made: a short fixed name to tell errors apart by, and a reason for people. `what()` reads "NAME: REASON".
class TOLV_EXPORT Exception : public std::runtime_error {
public:
    /// Copied.
    Exception(std::string name, std::string reason);

    /// What errors are told apart by, for example "IndexOutOfRange".
    [[nodiscard]] const std::string& name() const { return m_name; }
    /// What went wrong, for people.
    [[nodiscard]] const std::string& reason() const { return m_reason; }

private:
    std::string m_name;
    std::string m_reason;
};

/// An operation that a class declares and only its subclasses supply was called on the class itself. The name is "UnrecognizedOperation".
class TOLV_EXPORT UnrecognizedOperation : public Exception {
public:
    /// The reason reads "CLASS does not implement OPERATION".
    UnrecognizedOperation(const std::string& className, const std::string& operation);
};

/// A condition on a parameter was not met. The message is the format with its argument filled in.
class TOLV_EXPORT AssertionFailure : public std::logic_error {
public:
    /// Copied. The format has "%@" where the argument goes; without one it is the whole message.
    AssertionFailure(std::string format, std::string argument, std::string file, int line);

    /// The message with "%@" in the argument's place.
    [[nodiscard]] const std::string& format() const { return m_format; }
    /// The condition that was not met.
    [[nodiscard]] const std::string& argument() const { return m_argument; }
    /// The source unit, without a suffix.
    [[nodiscard]] const std::string& file() const { return m_file; }
    /// The line in the source unit.
    [[nodiscard]] int line() const { return m_line; }

private:
    std::string m_format;
    std::string m_argument;
    std::string m_file;
    int m_line;
};

/// Stops the program at once: writes the message, if there is one, to the log and aborts (std::abort), which nothing can catch. For states that no caller can go on from.
[[noreturn]] TOLV_EXPORT void stopProgram(const std::string& message = {});

} // namespace TOLVGraphing
