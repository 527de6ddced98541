#pragma once

#include "../golden/GoldenScenes.h"
#include "DrawnPage.h"
#include "Pixels.h"
#include "TemporaryFolder.h"

#include <desktop/output/GraphicsOutput.h>

#include <gtest/gtest.h>

#include <string>

namespace TOLVGraphing::testing_support {

/// Pixels a point in the images of the scenes.
inline constexpr double kSceneScale = 2.0;

/// What the files of a scene are made with: its size, a title and a creator.
[[nodiscard]] OutputSettings sceneSettings(const GoldenScene& scene);
/// Draws a scene with the desktop's fonts.
[[nodiscard]] std::vector<std::byte> renderedScene(const GoldenScene& scene, OutputKind kind, const OutputSettings& settings);

/// A test of one scene's files, with a folder of its own.
class SceneTest : public testing::TestWithParam<GoldenScene> {
protected:
    /// Writes the scene's file of a kind and answers its path.
    std::string written(OutputKind kind, const std::string& name) const;
    /// What the scene shows as SVG.
    [[nodiscard]] DrawnPage page() const;
    /// The scene's own image.
    [[nodiscard]] Pixels image() const;
    const TemporaryFolder& folder() const { return m_folder; }

private:
    TemporaryFolder m_folder;
};

/// Names a test by its scene.
[[nodiscard]] std::string sceneName(const testing::TestParamInfo<GoldenScene>& sceneInfo);

} // namespace TOLVGraphing::testing_support
