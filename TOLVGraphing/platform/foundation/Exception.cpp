#include "Exception.h"

#include "Log.h"

#include <cstdlib>
#include <utility>

namespace TOLVGraphing {

namespace {

std::string filledIn(const std::string& format, const std::string& argument)
{
    const std::size_t place = format.find("%@");
    if (place == std::string::npos)
        return format;
    return format.substr(0, place) + argument + format.substr(place + 2);
}

} // namespace

Exception::Exception(std::string name, std::string reason) : std::runtime_error(name + ": " + reason), m_name(std::move(name)), m_reason(std::move(reason)) {}

UnrecognizedOperation::UnrecognizedOperation(const std::string& className, const std::string& operation)
    : Exception("UnrecognizedOperation", className + " does not implement " + operation)
{
}

AssertionFailure::AssertionFailure(std::string format, std::string argument, std::string file, int line)
    : std::logic_error(filledIn(format, argument))
    , m_format(std::move(format))
    , m_argument(std::move(argument))
    , m_file(std::move(file))
    , m_line(line)
{
}

void stopProgram(const std::string& message)
{
    if (!message.empty())
        writeLog(message);
    std::abort();
}

} // namespace TOLVGraphing
