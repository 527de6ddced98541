#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace TOLVGraphing::app {

/// Everything that the command line does: reads the files that the arguments (without the program's name) name, lists their columns on `out` and writes pictures. Messages go to `error`, each on a line that begins with
/// "tolvgraph: ", and so does how far reading has come, to standard error, where that is a terminal.
///
/// Answers the exit status: 0, 1 where something could not be read, drawn or written, or 2 where the arguments are at fault; a message says what is wrong then. Pictures that were written before stay, the one that fails leaves
/// the file of its name as it was. Throws nothing.
[[nodiscard]] int runProgram(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& error);

} // namespace TOLVGraphing::app
