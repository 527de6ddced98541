#include "StringRasterizer.h"

#include <mutex>
#include <utility>

namespace TOLVGraphing {

namespace {

std::mutex& rasterizerMutex()
{
    static std::mutex mutex;
    return mutex;
}

std::shared_ptr<const StringRasterizer>& installedRasterizer()
{
    static std::shared_ptr<const StringRasterizer> rasterizer;
    return rasterizer;
}

} // namespace

StringRasterizer::~StringRasterizer() = default;

std::shared_ptr<const StringRasterizer> stringRasterizer()
{
    const std::lock_guard lock(rasterizerMutex());
    return installedRasterizer();
}

void setStringRasterizer(std::shared_ptr<const StringRasterizer> rasterizer)
{
    const std::lock_guard lock(rasterizerMutex());
    installedRasterizer() = std::move(rasterizer);
}

} // namespace TOLVGraphing
