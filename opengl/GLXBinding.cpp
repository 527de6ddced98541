#include "ContextBinding.h"

#include "LoadedLibrary.h"

#include <epoxy/glx.h>

namespace TOLVGraphing::opengl {

namespace {

Display* displayOf(const GLXBinding& binding)
{
    return static_cast<Display*>(binding.display);
}

} // namespace

GLXBinding GLXBinding::current()
{
    if (!isLoaded("libGLX.so.0") && !isLoaded("libGL.so.1"))
        return {};
    auto* const context = glXGetCurrentContext();
    if (!context)
        return {};
    return {glXGetCurrentDisplay(), context, glXGetCurrentDrawable(), glXGetCurrentReadDrawable()};
}

bool GLXBinding::isCurrent() const
{
    return glXGetCurrentContext() == context && glXGetCurrentDisplay() == display;
}

bool GLXBinding::makeCurrent() const
{
    return glXMakeContextCurrent(displayOf(*this), drawDrawable, readDrawable, static_cast<GLXContext>(context)) == True;
}

void GLXBinding::release() const
{
    glXMakeContextCurrent(displayOf(*this), None, None, nullptr);
}

} // namespace TOLVGraphing::opengl
