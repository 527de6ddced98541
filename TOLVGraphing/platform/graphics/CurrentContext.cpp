#include "CurrentContext.h"

#include <utility>

namespace TOLVGraphing {

namespace {

thread_local DrawingContext* t_current = nullptr;
thread_local bool t_isFlipped = false;

} // namespace

DrawingContext* currentContext()
{
    return t_current;
}

CurrentContextScope::CurrentContextScope(DrawingContext& context) : m_former(std::exchange(t_current, &context)), m_formerIsFlipped(std::exchange(t_isFlipped, false)) {}

CurrentContextScope::~CurrentContextScope()
{
    t_current = m_former;
    t_isFlipped = m_formerIsFlipped;
}

bool coordinatesAreFlipped()
{
    return t_isFlipped;
}

FlippedCoordinatesScope::FlippedCoordinatesScope(bool areFlipped) : m_former(std::exchange(t_isFlipped, areFlipped)) {}

FlippedCoordinatesScope::~FlippedCoordinatesScope()
{
    t_isFlipped = m_former;
}

} // namespace TOLVGraphing
