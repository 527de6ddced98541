#include "GalleryScenes.h"

#include <desktop/layout/LayoutJson.h>
#include <examples/Picture.h>

#include <TestPaths.h>

#include <algorithm>
#include <stdexcept>

Picture audioResponse();
Picture calibrationMarks();
Picture categoryLine();
Picture dashedStyles();
Picture denseSeries();
Picture dottedCounts();
Picture groupedBars();
Picture impulseSpectrum();
Picture markers();

namespace TOLVGraphing::testing_support {

namespace {

struct Example {
    const char* name;
    Picture (*make)();
};

constexpr Example kExamples[] = {
    {"audioResponse", audioResponse},
    {"calibrationMarks", calibrationMarks},
    {"categoryLine", categoryLine},
    {"dashedStyles", dashedStyles},
    {"denseSeries", denseSeries},
    {"dottedCounts", dottedCounts},
    {"groupedBars", groupedBars},
    {"impulseSpectrum", impulseSpectrum},
    {"markers", markers},
};

Picture madePicture(const std::string& name)
{
    for (const Example& example : kExamples) {
        if (name == example.name)
            return example.make();
    }
    throw std::runtime_error("no example " + name);
}

} // namespace

const std::vector<GoldenScene>& galleryScenes()
{
    static const std::vector<GoldenScene> scenes = [] {
        std::vector<GoldenScene> made;
        for (const Example& example : kExamples)
            made.push_back({example.name, madePicture(example.name).size, [name = example.name](const Rect& rect) { madePicture(name).sheet.drawInRect(rect); }});
        return made;
    }();
    return scenes;
}

std::string galleryLayout(const std::string& sceneName)
{
    Picture picture = madePicture(sceneName);
    return layoutJson(picture.sheet, picture.size);
}

std::string galleryPath(const std::string& sceneName, const std::string& suffix)
{
    return std::string(TOLV_SOURCE_DIR) + "/docs/gallery/" + madePicture(sceneName).name + suffix;
}

} // namespace TOLVGraphing::testing_support
