#pragma once

#include <TOLVGraphing/platform/opengl/OpenGLContext.h>
#include <TOLVGraphing/platform/opengl/StringRasterizer.h>
#include <TOLVGraphing/platform/text/NumberText.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace TOLVGraphing::testing_support {

/// Writes calls as "name argument ...", between the lines "perform NAME" and "done". Texture names are counted from 1, and those that live are known.
class RecordingOpenGLContext final : public OpenGLContext, private OpenGLFunctions {
public:
    using Lines = std::vector<std::string>;

    /// Several contexts may write into the same lines.
    explicit RecordingOpenGLContext(std::string name, std::shared_ptr<Lines> lines = std::make_shared<Lines>()) : m_name(std::move(name)), m_lines(std::move(lines)) {}

    bool perform(const std::function<void(OpenGLFunctions&)>& calls) override
    {
        if (!m_canBecomeCurrent)
            return false;
        write("perform " + m_name);
        calls(*this);
        write("done");
        return true;
    }

    [[nodiscard]] const Lines& lines() const { return *m_lines; }
    /// What was called since this was last asked.
    [[nodiscard]] Lines takenLines() { return std::exchange(*m_lines, {}); }
    [[nodiscard]] const std::set<std::uint32_t>& livingTextures() const { return m_livingTextures; }
    [[nodiscard]] const std::vector<std::uint8_t>& uploadedBytes() const { return m_uploadedBytes; }
    /// Makes every perform fail from now on.
    void refuse() { m_canBecomeCurrent = false; }
    /// Calls are counted in the texture names only.
    void stopWriting() { m_isWriting = false; }

private:
    void write(const std::string& line)
    {
        if (m_isWriting)
            m_lines->push_back(line);
    }
    template <typename... Numbers>
    void write(const char* call, Numbers... numbers)
    {
        std::string line = call;
        ((line += " " + textOf(numbers)), ...);
        write(line);
    }
    static std::string textOf(float number) { return shortestText(number); }
    template <typename Whole>
    static std::string textOf(Whole number)
    {
        return std::to_string(number);
    }

    void pixelStorei(std::uint32_t name, std::int32_t value) override { write("pixelStorei", name, value); }
    void genTextures(std::int32_t count, std::uint32_t* names) override
    {
        for (std::int32_t i = 0; i < count; ++i) {
            names[i] = ++m_lastTexture;
            m_livingTextures.insert(names[i]);
        }
        write("genTextures", count);
    }
    void deleteTextures(std::int32_t count, const std::uint32_t* names) override
    {
        for (std::int32_t i = 0; i < count; ++i) {
            m_livingTextures.erase(names[i]);
            write("deleteTexture", names[i]);
        }
    }
    void bindTexture(std::uint32_t target, std::uint32_t name) override { write("bindTexture", target, name); }
    void texParameteri(std::uint32_t target, std::uint32_t name, std::int32_t value) override { write("texParameteri", target, name, value); }
    void texImage2D(std::uint32_t target, std::int32_t level, std::int32_t internalFormat, std::int32_t width, std::int32_t height, std::int32_t border, std::uint32_t format,
        std::uint32_t type, const void* pixels) override
    {
        write("texImage2D", target, level, internalFormat, width, height, border, format, type);
        const auto* bytes = static_cast<const std::uint8_t*>(pixels);
        constexpr std::uint32_t kThreeBytes = 6407;
        m_uploadedBytes.assign(bytes, bytes + width * height * (format == kThreeBytes ? 3 : 4));
    }
    void begin(std::uint32_t mode) override { write("begin", mode); }
    void end() override { write("end"); }
    void texCoord2f(float s, float t) override { write("texCoord2f", s, t); }
    void vertex2f(float x, float y) override { write("vertex2f", x, y); }
    void vertex3f(float x, float y, float z) override { write("vertex3f", x, y, z); }

    std::string m_name;
    std::shared_ptr<Lines> m_lines;
    std::set<std::uint32_t> m_livingTextures;
    std::vector<std::uint8_t> m_uploadedBytes;
    std::uint32_t m_lastTexture = 0;
    bool m_canBecomeCurrent = true;
    bool m_isWriting = true;
};

/// The context that a test makes current; null, the default, for none.
class StubOpenGLSystem final : public OpenGLSystem {
public:
    std::shared_ptr<OpenGLContext> current;

    [[nodiscard]] std::shared_ptr<OpenGLContext> currentContext() const override { return current; }
};

/// Installs an OpenGL system for the life of the scope: a stub unless another is given.
class OpenGLScope {
public:
    explicit OpenGLScope(std::shared_ptr<OpenGLContext> current = nullptr) : m_stub(std::make_shared<StubOpenGLSystem>()), m_former(openGLSystem())
    {
        m_stub->current = std::move(current);
        setOpenGLSystem(m_stub);
    }
    ~OpenGLScope() { setOpenGLSystem(m_former); }
    OpenGLScope(const OpenGLScope&) = delete;
    OpenGLScope& operator=(const OpenGLScope&) = delete;
    void makeCurrent(std::shared_ptr<OpenGLContext> context) { m_stub->current = std::move(context); }

private:
    std::shared_ptr<StubOpenGLSystem> m_stub;
    std::shared_ptr<const OpenGLSystem> m_former;
};

/// Makes bitmaps of the frames' sizes, rounded down, of rising bytes, and notes what it was asked for.
class StubRasterizer final : public StringRasterizer {
public:
    struct Request {
        AttributedString string;
        StringFrame frame;
    };

    bool hasAlpha = true;
    /// In place of the whole pixels.
    std::optional<Size> reportedSize;
    mutable std::vector<Request> requests;

    [[nodiscard]] StringBitmap bitmapOfString(const AttributedString& string, const StringFrame& frame) const override
    {
        requests.push_back({string, frame});
        StringBitmap bitmap;
        bitmap.pixelWidth = static_cast<std::int32_t>(frame.size.width * frame.scale);
        bitmap.pixelHeight = static_cast<std::int32_t>(frame.size.height * frame.scale);
        bitmap.hasAlpha = hasAlpha;
        bitmap.size = reportedSize.value_or(Size{static_cast<double>(bitmap.pixelWidth), static_cast<double>(bitmap.pixelHeight)});
        if (bitmap.pixelWidth <= 0 || bitmap.pixelHeight <= 0)
            return {};
        bitmap.pixels.resize(static_cast<std::size_t>(bitmap.pixelWidth * bitmap.pixelHeight * (hasAlpha ? 4 : 3)));
        for (std::size_t i = 0; i < bitmap.pixels.size(); ++i)
            bitmap.pixels[i] = static_cast<std::uint8_t>(i % 251);
        return bitmap;
    }
};

/// Installs a rasterizer for the life of the scope: a stub unless another, or null, is given.
class RasterizerScope {
public:
    RasterizerScope() : RasterizerScope(std::make_shared<StubRasterizer>()) {}
    explicit RasterizerScope(std::shared_ptr<const StringRasterizer> rasterizer) : m_former(stringRasterizer()) { setStringRasterizer(std::move(rasterizer)); }
    ~RasterizerScope() { setStringRasterizer(m_former); }
    RasterizerScope(const RasterizerScope&) = delete;
    RasterizerScope& operator=(const RasterizerScope&) = delete;

private:
    std::shared_ptr<const StringRasterizer> m_former;
};

} // namespace TOLVGraphing::testing_support
