// Draws the programs' icons into the folder named on the command line.
#include "IconDrawings.h"

#include <desktop/output/AtomicFile.h>

#include <exception>
#include <filesystem>
#include <iostream>

using namespace TOLVGraphing;

int main(int argumentCount, char** arguments)
{
    if (argumentCount != 2) {
        std::cerr << "usage: " << arguments[0] << " FOLDER\n";
        return 2;
    }
    try {
        const auto write = [&](const icons::Icon& icon, int side) {
            const std::filesystem::path path = std::filesystem::path(arguments[1]) / icons::iconPath(icon, side);
            std::filesystem::create_directories(path.parent_path());
            writeFileAtomically(path, icons::iconData(icon, side));
            std::cout << path.string() << "\n";
        };
        for (const icons::Icon& icon : icons::allIcons()) {
            write(icon, 0);
            for (const int side : icons::kImageSides)
                write(icon, side);
        }
        return 0;
    } catch (const std::exception& problem) {
        std::cerr << arguments[0] << ": " << problem.what() << "\n";
        return 1;
    }
}
