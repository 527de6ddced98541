#include "WaterfallScene.h"

#include <TOLVGraphing/axes/SINumberFormatter.h>
#include <TOLVGraphing/platform/graphics/Color.h>
#include <TOLVMath/TOLVRealVector.h>

#include <epoxy/gl.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

using namespace TOLVGraphing;

namespace {

constexpr double kHighestLevel = 0.0;
constexpr double kLowestLevel = -48.0;
constexpr double kLevelStep = 6.0;
constexpr double kLevelLabelStep = 12.0;
constexpr double kMostTimeSteps = 10.0;
constexpr int kColorBands = 5;
/// Points.
constexpr double kLabelSize = 9.0;
constexpr double kTitleSize = 10.0;
constexpr double kTickLength = 4.0;

const Color kInk(0.13, 0.13, 0.15);

std::vector<double> frequencyTicks(double lowest, double highest, bool onlyLabelled)
{
    std::vector<double> ticks;
    for (double decade = 1.0; decade <= highest; decade *= 10.0) {
        for (int digit = 1; digit < 10; ++digit) {
            const double frequency = decade * digit;
            const bool isLabelled = digit == 1 || digit == 2 || digit == 5;
            if (frequency >= lowest && frequency <= highest && (isLabelled || !onlyLabelled))
                ticks.push_back(frequency);
        }
    }
    return ticks;
}

/// 1, 2 or 5 times a power of ten, so that there are not too many steps.
double timeStepFor(double lastTime)
{
    const double smallest = lastTime / kMostTimeSteps;
    const double decade = std::pow(10.0, std::floor(std::log10(smallest)));
    for (const double digit : {1.0, 2.0, 5.0}) {
        if (digit * decade >= smallest * (1.0 - 1e-9))
            return digit * decade;
    }
    return 10.0 * decade;
}

AttributedString textOf(const std::string& text, double size, const char* font = "Helvetica")
{
    return AttributedString(text, TextAttributes{Font{font, size}, kInk});
}

std::string numberText(double value)
{
    const auto text = NumberFormatter().stringFromNumber(std::abs(value)).value_or("");
    return value < 0.0 ? "\u2212" + text : text;
}

void setColor(const Color& color)
{
    glColor4d(color.redComponent(), color.greenComponent(), color.blueComponent(), color.alphaComponent());
}

Color mixed(const Color& one, const Color& other, double share)
{
    const auto mix = [&](double a, double b) { return a + (b - a) * share; };
    return {mix(one.redComponent(), other.redComponent()), mix(one.greenComponent(), other.greenComponent()), mix(one.blueComponent(), other.blueComponent()), 1.0};
}

/// The colour of a level from 0, the lowest, to 1: steps that are as far apart for eyes that see few colours.
Color levelColor(double level)
{
    static const std::array<Color, kColorBands + 1> kColors{
        Color(0.16, 0.22, 0.50), Color(0.12, 0.42, 0.62), Color(0.13, 0.60, 0.60), Color(0.42, 0.75, 0.45), Color(0.85, 0.80, 0.28), Color(0.95, 0.52, 0.16)};
    const double place = std::clamp(level, 0.0, 1.0) * kColorBands;
    const auto index = std::min(static_cast<std::size_t>(place), std::size_t{kColorBands - 1});
    return mixed(kColors[index], kColors[index + 1], place - static_cast<double>(index));
}

void line(Point from, double fromDepth, Point to, double toDepth)
{
    glVertex3d(from.x, from.y, fromDepth);
    glVertex3d(to.x, to.y, toDepth);
}

} // namespace

WaterfallScene::WaterfallScene(const Decay& decay, const std::string& title)
    : m_lowest(static_cast<double>(decay.frequencies.front()))
    , m_highest(static_cast<double>(decay.frequencies.back()))
    , m_lastTime(decay.slices.back().time)
    , m_timeStep(timeStepFor(m_lastTime))
    , m_title(textOf(title, 12.0, "HelveticaNeue-Bold"))
    , m_frequencyTitle(textOf("Frequency (Hz)", kTitleSize))
    , m_levelTitle(textOf("Level (dB)", kTitleSize))
    , m_timeTitle(textOf("Time (ms)", kTitleSize))
{
    const auto frequencies = TOLVRealVector::vectorWithComponents(decay.frequencies);
    for (const DecaySlice& slice : decay.slices) {
        auto curve = TOLVGraphCurve::curveWithX(frequencies, TOLVRealVector::vectorWithComponents(slice.levels), nullptr);
        curve->setXIsLog(true);
        curve->setYMinimum(static_cast<float>(kLowestLevel));
        curve->setYMaximum(static_cast<float>(kHighestLevel));
        m_slices.push_back({slice.time, std::move(curve)});
    }
    const SINumberFormatter formatter;
    for (const double frequency : frequencyTicks(m_lowest, m_highest, true))
        m_frequencyLabels.push_back({std::make_unique<StringTexture>(textOf(formatter.stringFromNumber(frequency).value_or(""), kLabelSize)), frequency});
    for (double level = kHighestLevel; level >= kLowestLevel; level -= kLevelLabelStep)
        m_levelLabels.push_back({std::make_unique<StringTexture>(textOf(numberText(level), kLabelSize)), level});
    for (double time = 0.0; time <= m_lastTime + 1e-6; time += 2.0 * m_timeStep)
        m_timeLabels.push_back({std::make_unique<StringTexture>(textOf(numberText(time), kLabelSize)), time});
}

void WaterfallScene::draw(int width, int height, double pixelsPerPoint)
{
    if (width != m_width || height != m_height || pixelsPerPoint != m_layout.pixelsPerPoint)
        layOut(width, height, pixelsPerPoint);
    setUpView(width, height);
    enterSpace();
    drawWalls();
    drawGrid();
    drawSlices();
    drawFrontEdges();
    leaveSpace();
    drawLabels();
}

void WaterfallScene::deleteTextures()
{
    for (StringTexture* texture : {&m_title, &m_frequencyTitle, &m_levelTitle, &m_timeTitle})
        texture->deleteTexture();
    for (auto* labels : {&m_frequencyLabels, &m_levelLabels, &m_timeLabels}) {
        for (Label& label : *labels)
            label.texture->deleteTexture();
    }
}

void WaterfallScene::layOut(int width, int height, double pixelsPerPoint)
{
    m_width = width;
    m_height = height;
    const double unit = pixelsPerPoint;
    const Rect plot(54.0 * unit, 46.0 * unit, std::max(width - 112.0 * unit, unit), std::max(height - 84.0 * unit, unit));
    m_layout.shift = {std::round(plot.width() * 0.17), std::round(plot.height() * 0.42)};
    m_layout.front = {plot.x(), plot.y(), plot.width() - m_layout.shift.width, plot.height() - m_layout.shift.height};
    m_layout.pixelsPerPoint = pixelsPerPoint;
    for (const Slice& slice : m_slices)
        slice.curve->buildForRect(m_layout.front);
    for (StringTexture* texture : {&m_title, &m_frequencyTitle, &m_levelTitle, &m_timeTitle})
        texture->setPixelsPerPoint(pixelsPerPoint);
    for (auto* labels : {&m_frequencyLabels, &m_levelLabels, &m_timeLabels}) {
        for (Label& label : *labels)
            label.texture->setPixelsPerPoint(pixelsPerPoint);
    }
}

void WaterfallScene::setUpView(int width, int height) const
{
    glViewport(0, 0, width, height);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(0.0, width, 0.0, height, -2.0, 2.0);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_TEXTURE_RECTANGLE);
    glEnable(GL_MULTISAMPLE);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glClearColor(1.0F, 1.0F, 1.0F, 1.0F);
    glClear(GL_COLOR_BUFFER_BIT);
}

void WaterfallScene::enterSpace() const
{
    // Depth moves a point to the right and up: a shear instead of a perspective, so that levels and frequencies can be read off at every depth.
    const std::array<double, 16> shear{1.0, 0.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, m_layout.shift.width, m_layout.shift.height, 1.0, 0.0, 0.0, 0.0, 0.0, 1.0};
    glPushMatrix();
    glMultMatrixd(shear.data());
}

void WaterfallScene::leaveSpace() const
{
    glPopMatrix();
}

double WaterfallScene::xOfFrequency(double frequency) const
{
    return m_layout.front.x() + m_layout.front.width() * std::log(frequency / m_lowest) / std::log(m_highest / m_lowest);
}

double WaterfallScene::yOfLevel(double level) const
{
    return m_layout.front.y() + m_layout.front.height() * (level - kLowestLevel) / (kHighestLevel - kLowestLevel);
}

double WaterfallScene::depthOfTime(double time) const
{
    return 1.0 - time / m_lastTime;
}

Point WaterfallScene::placeInPicture(Point inFront, double depth) const
{
    return {inFront.x + depth * m_layout.shift.width, inFront.y + depth * m_layout.shift.height};
}

void WaterfallScene::drawWalls() const
{
    const Rect& front = m_layout.front;
    const Point lowerLeft = front.origin;
    const Point upperLeft{front.x(), front.maxY()};
    const Point lowerRight{front.maxX(), front.y()};
    const Point upperRight{front.maxX(), front.maxY()};
    glBegin(GL_QUADS);
    setColor(Color::colorWithWhite(0.975));
    for (const Point& corner : {lowerLeft, lowerRight, upperRight, upperLeft})
        glVertex3d(corner.x, corner.y, 1.0);
    setColor(Color::colorWithWhite(0.95));
    line(lowerLeft, 0.0, upperLeft, 0.0);
    line(upperLeft, 1.0, lowerLeft, 1.0);
    setColor(Color::colorWithWhite(0.93));
    line(lowerLeft, 0.0, lowerRight, 0.0);
    line(lowerRight, 1.0, lowerLeft, 1.0);
    glEnd();
}

void WaterfallScene::drawGrid() const
{
    const Rect& front = m_layout.front;
    const Point lowerLeft = front.origin;
    const Point upperLeft{front.x(), front.maxY()};
    const Point lowerRight{front.maxX(), front.y()};
    const Point upperRight{front.maxX(), front.maxY()};
    glLineWidth(static_cast<float>(0.6 * m_layout.pixelsPerPoint));
    glBegin(GL_LINES);
    for (const double frequency : frequencyTicks(m_lowest, m_highest, false)) {
        const bool isDecade = std::abs(std::log10(frequency) - std::round(std::log10(frequency))) < 1e-9;
        setColor(Color::colorWithWhite(isDecade ? 0.62 : 0.84));
        const double x = xOfFrequency(frequency);
        line({x, front.y()}, 0.0, {x, front.y()}, 1.0);
        line({x, front.y()}, 1.0, {x, front.maxY()}, 1.0);
    }
    for (double level = kLowestLevel; level <= kHighestLevel; level += kLevelStep) {
        setColor(Color::colorWithWhite(std::fmod(level, kLevelLabelStep) == 0.0 ? 0.70 : 0.84));
        const double y = yOfLevel(level);
        line({front.x(), y}, 0.0, {front.x(), y}, 1.0);
        line({front.x(), y}, 1.0, {front.maxX(), y}, 1.0);
    }
    for (double time = 0.0; time <= m_lastTime + 1e-6; time += m_timeStep) {
        setColor(Color::colorWithWhite(0.84));
        line(lowerLeft, depthOfTime(time), upperLeft, depthOfTime(time));
        setColor(Color::colorWithWhite(0.78));
        line(lowerLeft, depthOfTime(time), lowerRight, depthOfTime(time));
    }
    setColor(Color::colorWithWhite(0.45));
    line(lowerLeft, 1.0, upperLeft, 1.0);
    line(upperRight, 1.0, lowerRight, 1.0);
    line(upperLeft, 1.0, upperRight, 1.0);
    line(upperLeft, 0.0, upperLeft, 1.0);
    glEnd();
}

void WaterfallScene::drawSlices() const
{
    // What lies below the lowest level is under the floor.
    const std::array<double, 4> aboveFloor{0.0, 1.0, 0.0, -m_layout.front.y()};
    glClipPlane(GL_CLIP_PLANE0, aboveFloor.data());
    glEnable(GL_CLIP_PLANE0);
    for (const Slice& slice : m_slices)
        drawSlice(slice);
    glDisable(GL_CLIP_PLANE0);
}

void WaterfallScene::drawSlice(const Slice& slice) const
{
    const double depth = depthOfTime(slice.time);
    const Rect& front = m_layout.front;
    const auto levelAt = [&](double y) { return (y - front.y()) / front.height(); };
    const auto corner = [&](double x, double y) {
        setColor(mixed(levelColor(levelAt(y)), Color::whiteColor(), 0.15));
        glVertex3d(x, y, depth);
    };
    const std::vector<Point> points = slice.curve->curve()->allPoints();
    // One strip for each pair of neighbouring colours, because between others everything would turn grey.
    const double bandHeight = front.height() / kColorBands;
    for (int band = 0; band < kColorBands; ++band) {
        glBegin(GL_QUAD_STRIP);
        for (const Point& point : points) {
            corner(point.x, std::min(point.y, front.y() + band * bandHeight));
            corner(point.x, std::min(point.y, front.y() + (band + 1) * bandHeight));
        }
        glEnd();
    }
    glLineWidth(static_cast<float>(0.7 * m_layout.pixelsPerPoint));
    setColor(mixed(kInk, levelColor(0.0), 0.25));
    slice.curve->draw3DInRect(front, static_cast<float>(depth));
}

void WaterfallScene::drawFrontEdges() const
{
    const Rect& front = m_layout.front;
    const double tick = kTickLength * m_layout.pixelsPerPoint;
    glLineWidth(static_cast<float>(0.9 * m_layout.pixelsPerPoint));
    setColor(kInk);
    glBegin(GL_LINES);
    line(front.origin, 0.0, {front.maxX(), front.y()}, 0.0);
    line({front.maxX(), front.y()}, 0.0, {front.maxX(), front.y()}, 1.0);
    line(front.origin, 0.0, {front.x(), front.maxY()}, 0.0);
    for (const double frequency : frequencyTicks(m_lowest, m_highest, false))
        line({xOfFrequency(frequency), front.y()}, 0.0, {xOfFrequency(frequency), front.y() - tick}, 0.0);
    for (const Label& label : m_levelLabels)
        line({front.x(), yOfLevel(label.value)}, 0.0, {front.x() - tick, yOfLevel(label.value)}, 0.0);
    for (double time = 0.0; time <= m_lastTime + 1e-6; time += m_timeStep)
        line({front.maxX(), front.y()}, depthOfTime(time), {front.maxX() + tick, front.y()}, depthOfTime(time));
    glEnd();
}

void WaterfallScene::drawLabel(StringTexture& texture, Point place, Label::Anchor anchor) const
{
    if (texture.texName() == 0)
        texture.genTexture();
    const Size size = texture.texSize();
    Point corner{place.x - size.width / 2.0, place.y - size.height / 2.0};
    if (anchor == Label::Anchor::Left)
        corner.x = place.x;
    else if (anchor == Label::Anchor::Right)
        corner.x = place.x - size.width;
    else if (anchor == Label::Anchor::Above)
        corner.y = place.y - size.height;
    else
        corner.y = place.y;
    corner.x = std::min(corner.x, m_width - size.width - 4.0 * m_layout.pixelsPerPoint);
    // On whole pixels the letters are as sharp as on paper.
    texture.drawAtPoint({std::round(corner.x), std::round(corner.y)});
}

void WaterfallScene::drawUpright(StringTexture& texture, Point center) const
{
    if (texture.texName() == 0)
        texture.genTexture();
    const Size size = texture.texSize();
    glPushMatrix();
    glTranslated(std::round(center.x + size.height / 2.0), std::round(center.y - size.width / 2.0), 0.0);
    glRotated(90.0, 0.0, 0.0, 1.0);
    texture.drawAtPoint({0.0, 0.0});
    glPopMatrix();
}

void WaterfallScene::drawLabels()
{
    const Rect& front = m_layout.front;
    const double unit = m_layout.pixelsPerPoint;
    const double gap = (kTickLength + 2.0) * unit;
    glEnable(GL_TEXTURE_RECTANGLE);
    glColor4f(1.0F, 1.0F, 1.0F, 1.0F);
    for (const Label& label : m_frequencyLabels)
        drawLabel(*label.texture, {xOfFrequency(label.value), front.y() - gap + 2.0 * unit}, Label::Anchor::Above);
    for (const Label& label : m_levelLabels)
        drawLabel(*label.texture, {front.x() - gap, yOfLevel(label.value)}, Label::Anchor::Right);
    for (const Label& label : m_timeLabels) {
        const Point place = placeInPicture({front.maxX(), front.y()}, depthOfTime(label.value));
        drawLabel(*label.texture, {place.x + gap, place.y}, Label::Anchor::Left);
    }
    drawLabel(m_frequencyTitle, {front.x() + front.width() / 2.0, 9.0 * unit}, Label::Anchor::Below);
    drawUpright(m_levelTitle, {14.0 * unit, front.y() + front.height() / 2.0});
    const Point middle = placeInPicture({front.maxX(), front.y()}, 0.5);
    drawLabel(m_timeTitle, {middle.x + 32.0 * unit, middle.y - 6.0 * unit}, Label::Anchor::Left);
    drawLabel(m_title, {m_width / 2.0, m_height - 26.0 * unit}, Label::Anchor::Below);
    glDisable(GL_TEXTURE_RECTANGLE);
}
