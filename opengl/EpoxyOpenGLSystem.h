#pragma once

#include "TOLVGraphing/platform/opengl/OpenGLContext.h"
#include <TOLVMath/Export.h>

namespace TOLVGraphing {

/// Captures contexts of EGL and of GLX with their display and their surfaces; calls go through libepoxy. It links to neither of the two and never loads them: a context is only looked for where the program has them.
///
/// A captured context is made current with the surfaces that it had when it was captured, unless it is current already; in EGL without any where these are gone and the driver allows that. In GLX the surface has to live as
/// long as the texture. What was current before, of EGL or of GLX, becomes current again.
///
/// Contexts of OpenGL ES are none: they have no quads and no rectangle textures. In a core profile the calls of the compatibility profile only set the error of OpenGL.
class TOLV_EXPORT EpoxyOpenGLSystem final : public OpenGLSystem {
public:
    [[nodiscard]] std::shared_ptr<OpenGLContext> currentContext() const override;
};

/// Makes string textures and curves reach the contexts of EGL and GLX that are current. Programs call it once at their start.
TOLV_EXPORT void installEpoxyOpenGLSystem();

} // namespace TOLVGraphing
