#pragma once

#include <tests/desktop/TemporaryFolder.h>

#include <string>

namespace TOLVGraphing::testing_support {

/// Writes one of the measurements that the commands on the manual's pages read, for example "recording.wav". Throws std::runtime_error for a name that is none of them.
void writeMeasuredFile(const TemporaryFolder& folder, const std::string& name);

} // namespace TOLVGraphing::testing_support
