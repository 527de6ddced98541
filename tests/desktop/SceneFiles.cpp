#include "SceneFiles.h"

#include <desktop/text/PangoTextSystem.h>

namespace TOLVGraphing::testing_support {

OutputSettings sceneSettings(const GoldenScene& scene)
{
    OutputSettings settings;
    settings.size = scene.size;
    settings.scale = kSceneScale;
    settings.title = "The scene " + scene.name;
    settings.creator = "scene tests";
    return settings;
}

std::vector<std::byte> renderedScene(const GoldenScene& scene, OutputKind kind, const OutputSettings& settings)
{
    const TextSystemScope fonts(text::PangoTextSystem::shared());
    return renderToBytes(kind, settings, [&](DrawingContext&, const Rect& bounds) { scene.draw(bounds); });
}

std::string SceneTest::written(OutputKind kind, const std::string& name) const
{
    const auto bytes = renderedScene(GetParam(), kind, sceneSettings(GetParam()));
    return m_folder.write(name, {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
}

DrawnPage SceneTest::page() const
{
    const auto bytes = renderedScene(GetParam(), OutputKind::SVG, sceneSettings(GetParam()));
    return DrawnPage::fromSVG({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
}

Pixels SceneTest::image() const
{
    return pixelsOfPNG(renderedScene(GetParam(), OutputKind::PNG, sceneSettings(GetParam())));
}

std::string sceneName(const testing::TestParamInfo<GoldenScene>& sceneInfo)
{
    return sceneInfo.param.name;
}

} // namespace TOLVGraphing::testing_support
