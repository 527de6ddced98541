#include "CurrentContext.h"

namespace TOLVGraphing {

namespace {

thread_local DrawingContext* t_current = nullptr;

} // namespace

DrawingContext* currentContext()
{
    return t_current;
}

CurrentContextScope::CurrentContextScope(DrawingContext& context)
    : m_former(t_current)
{
    t_current = &context;
}

CurrentContextScope::~CurrentContextScope()
{
    t_current = m_former;
}

} // namespace TOLVGraphing
