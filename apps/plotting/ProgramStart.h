#pragma once

namespace TOLVGraphing::app {

/// What a program does before anything else.
///
/// A standard input or output that was closed gets an end that refuses to be read from, or written to: otherwise the next file to be opened would get its number, and messages would go into a picture. Standard error that was closed takes
/// messages to nowhere. Signals that end the program take temporary files with them, see `removeTemporaryFilesAtSignals`.
void prepareProgram();

} // namespace TOLVGraphing::app
