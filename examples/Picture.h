#pragma once

#include <TOLVGraphing/views/GraphSheet.h>
#include <desktop/output/GraphicsOutput.h>
#include <desktop/text/PangoTextSystem.h>

#include <filesystem>
#include <functional>
#include <iostream>
#include <string>
#include <vector>

/// What an example draws: a sheet of a size in points, under a name for its files.
struct Picture {
    std::string name;
    TOLVGraphing::Size size;
    TOLVGraphing::GraphSheet sheet;
};

/// Makes the picture with the desktop's fonts and writes NAME.svg and NAME.png (2 pixels a point) into the folder named on the command line, or else into the current one.
inline int writePicture(int argumentCount, char** arguments, const std::function<Picture()>& makePicture)
{
    using namespace TOLVGraphing;
    try {
        installDesktopTextSystem();
        Picture picture = makePicture();
        OutputSettings settings;
        settings.size = picture.size;
        const std::filesystem::path folder = argumentCount > 1 ? arguments[1] : ".";
        for (const auto& [suffix, kind] : {std::pair{".svg", OutputKind::SVG}, std::pair{".png", OutputKind::PNG}}) {
            const auto file = folder / (picture.name + suffix);
            writeToFile(file, kind, settings, [&](DrawingContext&, const Rect& bounds) { picture.sheet.drawInRect(bounds); });
            std::cout << file.string() << "\n";
        }
        return 0;
    } catch (const std::exception& problem) {
        std::cerr << arguments[0] << ": " << problem.what() << "\n";
        return 1;
    }
}
