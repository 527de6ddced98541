#pragma once

#include <cairo.h>

#include <memory>

namespace TOLVGraphing::cairo {

/// Gives a Cairo object's reference back.
struct CairoDeleter {
    void operator()(cairo_t* context) const { cairo_destroy(context); }
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_font_options_t* options) const { cairo_font_options_destroy(options); }
};

using ContextPointer = std::unique_ptr<cairo_t, CairoDeleter>;
using SurfacePointer = std::unique_ptr<cairo_surface_t, CairoDeleter>;
using FontOptionsPointer = std::unique_ptr<cairo_font_options_t, CairoDeleter>;

} // namespace TOLVGraphing::cairo
