#pragma once

#include "DrawingContext.h"
#include <TOLVMath/Export.h>

namespace TOLVGraphing {

/// Takes every call and does nothing: layout and speed are measured with it.
class TOLV_EXPORT NullContext final : public DrawingContext {
public:
    void saveState() override {}
    void restoreState() override {}
    void concatenateTransform(const AffineTransform&) override {}
    void clipToPath(const Path&, FillRule) override {}
    void setFillColor(const std::optional<Color>&) override {}
    void setStrokeColor(const std::optional<Color>&) override {}
    void setLineWidth(double) override {}
    void setLineDash(const LineDash&) override {}
    void setLineCap(LineCap) override {}
    void setLineJoin(LineJoin) override {}
    void setMiterLimit(double) override {}
    void drawFilledPath(const Path&, FillRule) override {}
    void drawStrokedPath(const Path&) override {}
    void drawText(const AttributedString&, Point) override {}
};

} // namespace TOLVGraphing
