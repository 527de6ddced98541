#include "Program.h"

#include <apps/plotting/ProgramStart.h>

#include <algorithm>
#include <iostream>

using namespace TOLVGraphing::app;

int main(int argumentCount, char** arguments)
{
    prepareProgram();
    return runProgram({arguments + std::min(argumentCount, 1), arguments + argumentCount}, std::cout, std::cerr);
}
