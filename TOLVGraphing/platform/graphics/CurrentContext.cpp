#include "CurrentContext.h"

#include <utility>

namespace TOLVGraphing {

namespace {

struct ThreadState {
    DrawingContext* context = nullptr;
    bool isFlipped = false;
};

ThreadState& threadState()
{
    thread_local ThreadState state;
    return state;
}

} // namespace

DrawingContext* currentContext()
{
    return threadState().context;
}

CurrentContextScope::CurrentContextScope(DrawingContext& context)
    : m_former(std::exchange(threadState().context, &context))
    , m_formerIsFlipped(std::exchange(threadState().isFlipped, false))
{
}

CurrentContextScope::~CurrentContextScope()
{
    threadState().context = m_former;
    threadState().isFlipped = m_formerIsFlipped;
}

bool coordinatesAreFlipped()
{
    return threadState().isFlipped;
}

FlippedCoordinatesScope::FlippedCoordinatesScope(bool areFlipped) : m_former(std::exchange(threadState().isFlipped, areFlipped)) {}

FlippedCoordinatesScope::~FlippedCoordinatesScope()
{
    threadState().isFlipped = m_former;
}

} // namespace TOLVGraphing
