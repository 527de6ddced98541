#include "StringRasterizer.h"

#include "../foundation/InstalledService.h"

#include <utility>

namespace TOLVGraphing {

namespace {

InstalledService<StringRasterizer>& installedRasterizer()
{
    static InstalledService<StringRasterizer> service;
    return service;
}

} // namespace

StringRasterizer::~StringRasterizer() = default;

std::shared_ptr<const StringRasterizer> stringRasterizer()
{
    return installedRasterizer().get();
}

void setStringRasterizer(std::shared_ptr<const StringRasterizer> rasterizer)
{
    installedRasterizer().set(std::move(rasterizer));
}

} // namespace TOLVGraphing
