#include "PixelCanvas.h"

#include <gtest/gtest.h>

#include <epoxy/gl.h>

#include <algorithm>

namespace TOLVGraphing::testing_support {

PixelCanvas::PixelCanvas(int width, int height, double pixelsPerPoint) : m_width(width), m_height(height)
{
    GLuint buffers[2] = {};
    glGenRenderbuffers(2, buffers);
    glGenFramebuffers(1, &m_framebuffer);
    glBindFramebuffer(GL_FRAMEBUFFER, m_framebuffer);
    const std::pair<GLenum, GLenum> kinds[] = {{GL_RGBA8, GL_COLOR_ATTACHMENT0}, {GL_DEPTH_COMPONENT24, GL_DEPTH_ATTACHMENT}};
    for (std::size_t i = 0; i < 2; ++i) {
        glBindRenderbuffer(GL_RENDERBUFFER, buffers[i]);
        glRenderbufferStorage(GL_RENDERBUFFER, kinds[i].first, width, height);
        glFramebufferRenderbuffer(GL_FRAMEBUFFER, kinds[i].second, GL_RENDERBUFFER, buffers[i]);
    }
    EXPECT_EQ(glCheckFramebufferStatus(GL_FRAMEBUFFER), static_cast<GLenum>(GL_FRAMEBUFFER_COMPLETE));
    glViewport(0, 0, width, height);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(0.0, width / pixelsPerPoint, 0.0, height / pixelsPerPoint, -1.0, 1.0);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glEnable(GL_TEXTURE_RECTANGLE);
    glColor4f(1.0F, 1.0F, 1.0F, 1.0F);
    clear();
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

void PixelCanvas::clear() const
{
    glClearColor(1.0F, 1.0F, 1.0F, 1.0F);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
}

Pixels PixelCanvas::pixels() const
{
    Pixels pixels{m_width, m_height, {}};
    const std::size_t bytesPerRow = static_cast<std::size_t>(m_width) * 3;
    pixels.bytes.resize(bytesPerRow * static_cast<std::size_t>(m_height));
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glBindFramebuffer(GL_FRAMEBUFFER, m_framebuffer);
    glReadPixels(0, 0, m_width, m_height, GL_RGB, GL_UNSIGNED_BYTE, pixels.bytes.data());
    for (std::size_t row = 0; row < static_cast<std::size_t>(m_height) / 2; ++row) {
        const auto upper = pixels.bytes.begin() + static_cast<std::ptrdiff_t>(row * bytesPerRow);
        const auto lower = pixels.bytes.end() - static_cast<std::ptrdiff_t>((row + 1) * bytesPerRow);
        std::swap_ranges(upper, upper + static_cast<std::ptrdiff_t>(bytesPerRow), lower);
    }
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    return pixels;
}

} // namespace TOLVGraphing::testing_support
