#include "EdgeInsets.h"

#include "../text/NumberText.h"

namespace TOLVGraphing {

std::string toString(const EdgeInsets& insets)
{
    return "(" + shortestText(insets.top) + ", " + shortestText(insets.left) + ", " + shortestText(insets.bottom) + ", " + shortestText(insets.right) + ")";
}

} // namespace TOLVGraphing
