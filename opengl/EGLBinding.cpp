#include "ContextBinding.h"

#include "LoadedLibrary.h"

#include <epoxy/egl.h>

namespace TOLVGraphing::opengl {

EGLBinding EGLBinding::current()
{
    // libepoxy would load the library, or end the program where there is none.
    if (!isLoaded("libEGL.so.1"))
        return {};
    auto* const context = eglGetCurrentContext();
    if (context == EGL_NO_CONTEXT)
        return {};
    return {eglGetCurrentDisplay(), context, eglGetCurrentSurface(EGL_DRAW), eglGetCurrentSurface(EGL_READ)};
}

bool EGLBinding::isCurrent() const
{
    return eglGetCurrentContext() == context && eglGetCurrentDisplay() == display;
}

bool EGLBinding::makeCurrent() const
{
    if (eglMakeCurrent(display, drawSurface, readSurface, context) == EGL_TRUE)
        return true;
    // The surfaces may have gone before the context.
    return eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, context) == EGL_TRUE;
}

void EGLBinding::release() const
{
    eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
}

} // namespace TOLVGraphing::opengl
