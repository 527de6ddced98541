#pragma once

#include <pango/pango.h>

#include <memory>

namespace TOLVGraphing::text {

/// Gives a Pango object's reference back.
struct PangoDeleter {
    void operator()(PangoFontDescription* description) const { pango_font_description_free(description); }
    void operator()(PangoFontMap* map) const { g_object_unref(map); }
    void operator()(PangoContext* context) const { g_object_unref(context); }
    void operator()(PangoLayout* layout) const { g_object_unref(layout); }
    void operator()(PangoFont* font) const { g_object_unref(font); }
};

template <typename Object>
using PangoPointer = std::unique_ptr<Object, PangoDeleter>;

} // namespace TOLVGraphing::text
