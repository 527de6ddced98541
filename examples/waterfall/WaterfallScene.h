#pragma once

#include "Decay.h"

#include <TOLVGraphing/data/TOLVGraphCurve.h>
#include <TOLVGraphing/opengl/StringTexture.h>

#include <memory>
#include <string>
#include <vector>

/// A waterfall of a decay in the current OpenGL context: one response curve for each time, the earliest behind, on a frequency axis, a level axis and a time axis whose texts are string textures.
///
/// The unit of the scene is a device pixel. Each slice is a filled area under its curve, painted from back to front over those behind it, so that it hides them.
class WaterfallScene {
public:
    WaterfallScene(const Decay& decay, const std::string& title);

    /// Draws over the whole framebuffer that is bound: `width` by `height` pixels, so many of them a point. The context is the same for the life of the scene and of the compatibility profile; its matrices and
    /// its state are the scene's.
    void draw(int width, int height, double pixelsPerPoint);
    /// Frees the textures, before their context goes.
    void deleteTextures();

private:
    struct Slice {
        double time = 0.0;
        std::shared_ptr<TOLVGraphing::TOLVGraphCurve> curve;
    };
    struct Label {
        /// The corner or edge of the text that stands at the place.
        enum class Anchor { Left, Right, Above, Below };
        std::unique_ptr<TOLVGraphing::StringTexture> texture;
        double value = 0.0;
    };
    /// The front of the plot, in pixels, and how far its back is moved.
    struct Layout {
        TOLVGraphing::Rect front;
        TOLVGraphing::Size shift;
        double pixelsPerPoint = 1.0;
    };

    void layOut(int width, int height, double pixelsPerPoint);
    void setUpView(int width, int height) const;
    /// From now on coordinates are those of the front plane, z goes from 0 (front) to 1 (back).
    void enterSpace() const;
    void leaveSpace() const;
    void drawWalls() const;
    void drawGrid() const;
    void drawSlices() const;
    void drawSlice(const Slice& slice) const;
    void drawFrontEdges() const;
    void drawLabels();
    void drawLabel(TOLVGraphing::StringTexture& texture, TOLVGraphing::Point place, Label::Anchor anchor) const;
    void drawUpright(TOLVGraphing::StringTexture& texture, TOLVGraphing::Point center) const;
    [[nodiscard]] double xOfFrequency(double frequency) const;
    [[nodiscard]] double yOfLevel(double level) const;
    [[nodiscard]] double depthOfTime(double time) const;
    [[nodiscard]] TOLVGraphing::Point placeInPicture(TOLVGraphing::Point inFront, double depth) const;

    double m_lowest;
    double m_highest;
    double m_lastTime;
    double m_timeStep;
    std::vector<Slice> m_slices;
    std::vector<Label> m_frequencyLabels;
    std::vector<Label> m_levelLabels;
    std::vector<Label> m_timeLabels;
    TOLVGraphing::StringTexture m_title;
    TOLVGraphing::StringTexture m_frequencyTitle;
    TOLVGraphing::StringTexture m_levelTitle;
    TOLVGraphing::StringTexture m_timeTitle;
    Layout m_layout;
    int m_width = 0;
    int m_height = 0;
};
