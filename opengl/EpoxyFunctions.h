#pragma once

#include "TOLVGraphing/platform/opengl/OpenGLContext.h"

namespace TOLVGraphing::opengl {

/// Calls the entry points of the context that is current, through libepoxy.
class EpoxyFunctions final : public OpenGLFunctions {
public:
    void pixelStorei(std::uint32_t name, std::int32_t value) override;
    void genTextures(std::int32_t count, std::uint32_t* names) override;
    void deleteTextures(std::int32_t count, const std::uint32_t* names) override;
    void bindTexture(std::uint32_t target, std::uint32_t name) override;
    void texParameteri(std::uint32_t target, std::uint32_t name, std::int32_t value) override;
    void texImage2D(std::uint32_t target, std::int32_t level, std::int32_t internalFormat, std::int32_t width, std::int32_t height, std::int32_t border, std::uint32_t format,
        std::uint32_t type, const void* pixels) override;
    void begin(std::uint32_t mode) override;
    void end() override;
    void texCoord2f(float s, float t) override;
    void vertex2f(float x, float y) override;
    void vertex3f(float x, float y, float z) override;
};

} // namespace TOLVGraphing::opengl
