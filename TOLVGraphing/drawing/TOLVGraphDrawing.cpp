#include "TOLVGraphDrawing.h"

namespace TOLVGraphing {

TOLVGraphDrawing::~TOLVGraphDrawing() = default;

TOLVGraphMarkerDrawing::~TOLVGraphMarkerDrawing() = default;

} // namespace TOLVGraphing
