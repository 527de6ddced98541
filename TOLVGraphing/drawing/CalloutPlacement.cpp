#include "CalloutPlacement.h"

namespace TOLVGraphing {

TOLVGraphCalloutLayout::~TOLVGraphCalloutLayout() = default;

} // namespace TOLVGraphing
