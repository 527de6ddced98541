#include "FileError.h"

#include <system_error>
#include <utility>

namespace TOLVGraphing {

FileError::FileError(std::string path, std::string reason) : std::runtime_error(path + ": " + reason), m_path(std::move(path)), m_reason(std::move(reason)) {}

FileError::FileError(std::string path, const std::string& attempt, int errorNumber) : FileError(std::move(path), attempt + ": " + std::generic_category().message(errorNumber)) {}

} // namespace TOLVGraphing
