#pragma once

#include <chrono>

namespace TOLVGraphing {

/// Gives what this program has on the clipboard to the desktop's clipboard manager, with all types, so that it can be pasted when the program is gone. Runs the event loop, without the user's input, until the manager has fetched
/// everything. Needs a QGuiApplication.
/// Contents longer than one message to the display (16 MiB on most) go in pieces, which Qt's own attempt at the end of the application object cannot do: the first long type goes along with all short ones, and other long types
/// are left out, because some managers ask for everything at once and Qt sends one type in pieces at a time.
/// A manager that has neither answered nor taken the clipboard over within `patience` gets nothing and the clipboard is cleared, so that the end of the program waits once.
/// False where nothing was given: the clipboard belongs to another program, no manager runs, it refused or did not answer, or the display is not an X server.
bool handClipboardOver(std::chrono::milliseconds patience);

} // namespace TOLVGraphing
