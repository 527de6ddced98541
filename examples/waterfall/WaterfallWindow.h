#pragma once

#include "Decay.h"

#include <string>

/// Shows the waterfall in a window until it is closed, and answers the program's exit status.
int showWaterfall(int argumentCount, char** arguments, const Decay& decay, const std::string& title);
