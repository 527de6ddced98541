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
    /// The context of EGL, or else of GLX, that is current on this thread; null without one and for one of OpenGL ES. It does not keep the context of EGL or GLX alive: after its end the captured one is not to be used.
    [[nodiscard]] std::shared_ptr<OpenGLContext> currentContext() const override;
};

/// Makes string textures and curves reach the contexts of EGL and GLX that are current (see setOpenGLSystem). Programs that show graphs in OpenGL scenes call it once at their start, besides installDesktopStringRasterizer, whose bitmaps the
/// textures have; installQtServices calls neither. Any thread may call it.
TOLV_EXPORT void installEpoxyOpenGLSystem();

} // namespace TOLVGraphing
