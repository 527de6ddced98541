#include "Program.h"

#include <algorithm>
#include <iostream>

int main(int argumentCount, char** arguments)
{
    return TOLVGraphing::app::runProgram({arguments + std::min(argumentCount, 1), arguments + argumentCount}, std::cout, std::cerr);
}
