// A text for an OpenGL scene. There is no scene here: without a context it must be made and measured, and draw nothing.
#include <TOLVGraphing/opengl/StringTexture.h>
#include <TOLVGraphing/platform/opengl/OpenGLContext.h>
#include <opengl/EpoxyOpenGLSystem.h>

#include <cstdio>

using namespace TOLVGraphing;

int main()
{
    installEpoxyOpenGLSystem();
    StringTexture label("1 kHz", TextAttributes{Font{"Helvetica", 9.0}, Color::blackColor()});
    label.drawAtPoint({10.0, 20.0});
    const Size size = label.texSize();
    std::printf("texture of %g by %g pixels\n", size.width, size.height);
    return size.width == 0.0 && size.height == 0.0 ? 0 : 1;
}
