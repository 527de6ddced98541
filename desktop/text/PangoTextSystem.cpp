#include "PangoTextSystem.h"

#include "FontResolver.h"
#include "TextLayout.h"
#include "ValidUtf8.h"

#include <hb.h>
#include <pango/pangocairo.h>
#include <pango/pangofc-fontmap.h>

#include <algorithm>
#include <cmath>
#include <list>
#include <mutex>
#include <string_view>
#include <unordered_map>

namespace TOLVGraphing::text {

namespace {

// Pango counts in 1/1024 of a point with 32 bits, about two million points. Texts are shaped within these bounds and scaled where their size is outside.
constexpr double kSmallestShapedSize = 1.0;
/// Sizes below the smallest are shaped at this one, whose advances lose little by being counted.
constexpr double kSmallTextsShapedSize = 12.0;
constexpr double kLargestShapedSize = 1000.0;
constexpr double kLargestShapedExtent = 1.0e6;

/// What lies beyond so many bytes of a text is not seen: Pango takes a few hundred bytes of memory for every one.
constexpr std::size_t kLongestText = 200000;

constexpr std::size_t kRememberedLayouts = 1024;
constexpr std::size_t kLongestRememberedText = 1024;
constexpr std::size_t kRememberedFaces = 64;

/// A face ready for shaping.
struct Face {
    PangoPointer<PangoFontDescription> description;
    FaceMetrics metrics;
};

PangoPointer<PangoFontDescription> descriptionOf(const FontFace& face)
{
    PangoPointer<PangoFontDescription> description(pango_font_description_new());
    pango_font_description_set_family(description.get(), face.family.c_str());
    pango_font_description_set_weight(description.get(), static_cast<PangoWeight>(face.weight));
    pango_font_description_set_style(description.get(), face.isItalic ? PANGO_STYLE_ITALIC : PANGO_STYLE_NORMAL);
    return description;
}

/// The extents that the font file itself gives, in em.
FaceMetrics ownMetrics(PangoFontMap* map, PangoContext* context, const PangoFontDescription* description)
{
    const PangoPointer<PangoFontDescription> sized(pango_font_description_copy(description));
    pango_font_description_set_absolute_size(sized.get(), 12.0 * PANGO_SCALE);
    const PangoPointer<PangoFont> font(pango_font_map_load_font(map, context, sized.get()));
    if (!font)
        return {0.8, 0.2, 0.0};
    hb_face_t* face = hb_font_get_face(pango_font_get_hb_font(font.get()));
    const std::unique_ptr<hb_font_t, decltype(&hb_font_destroy)> unscaled(hb_font_create(face), &hb_font_destroy);
    hb_font_extents_t extents{};
    const double em = hb_face_get_upem(face);
    if (!hb_font_get_h_extents(unscaled.get(), &extents) || !(em > 0.0))
        return {0.8, 0.2, 0.0};
    return {extents.ascender / em, -extents.descender / em, extents.line_gap / em};
}

bool isUsableSize(double size)
{
    return size > 0.0 && std::isfinite(size);
}

/// The text up to the longest length, without half a character at its end.
std::string_view beginning(std::string_view text)
{
    if (text.size() <= kLongestText)
        return text;
    std::size_t length = kLongestText;
    while (length > kLongestText - 3 && (static_cast<unsigned char>(text[length]) & 0xC0U) == 0x80U)
        --length;
    return text.substr(0, length);
}

/// Where there is no font at all, Pango measures and draws boxes, but leaves the offsets of their runs as it finds them in memory.
void clearOffsetsWithoutFont(PangoLayoutLine* line)
{
    for (GSList* link = line->runs; link; link = link->next) {
        auto* run = static_cast<PangoGlyphItem*>(link->data);
        if (!run->item->analysis.font)
            run->y_offset = run->start_x_offset = run->end_x_offset = 0;
    }
}

/// The font size to shape a text of so many bytes at.
double shapedSizeFor(double size, std::size_t bytes)
{
    const double largest = std::min(kLargestShapedSize, kLargestShapedExtent / static_cast<double>(bytes + 1));
    const double wanted = size < kSmallestShapedSize ? kSmallTextsShapedSize : size;
    return std::max(kSmallestShapedSize, std::min(wanted, largest));
}

/// What tells two layouts apart; the views point into the remembered entry or into the caller's text.
struct LayoutKey {
    std::string_view fontName;
    std::string_view text;
    double size = 0.0;

    friend bool operator==(const LayoutKey&, const LayoutKey&) = default;
};

struct LayoutKeyHash {
    std::size_t operator()(const LayoutKey& key) const
    {
        const std::hash<std::string_view> hash;
        return hash(key.text) * 31 + hash(key.fontName) * 7 + std::hash<double>()(key.size);
    }
};

struct RememberedLayout {
    std::string fontName;
    std::string text;
    double size;
    TextLayout layout;
};

} // namespace

struct PangoTextSystem::Engine {
    Engine();

    /// The layout of the text, valid until the next call. The mutex has to be held.
    const TextLayout& layoutFor(const AttributedString& text);
    const Face& faceFor(const std::string& name);

    std::mutex mutex;

private:
    TextLayout makeLayout(const std::string& text, const Font& font);

    FontResolver m_resolver;
    PangoPointer<PangoFontMap> m_map;
    PangoPointer<PangoContext> m_context;
    std::unordered_map<std::string, Face> m_faces;
    /// The most recently used layout comes first.
    std::list<RememberedLayout> m_layouts;
    std::unordered_map<LayoutKey, std::list<RememberedLayout>::iterator, LayoutKeyHash> m_byKey;
    TextLayout m_longLayout;
};

PangoTextSystem::Engine::Engine() : m_map(pango_cairo_font_map_new_for_font_type(CAIRO_FONT_TYPE_FT))
{
    m_context.reset(pango_font_map_create_context(m_map.get()));
    // The map's own resolution would be the same, but setting it waits until all fonts are listed.
    pango_cairo_context_set_resolution(m_context.get(), 72.0);
    const std::unique_ptr<cairo_font_options_t, decltype(&cairo_font_options_destroy)> options(cairo_font_options_create(), &cairo_font_options_destroy);
    cairo_font_options_set_antialias(options.get(), CAIRO_ANTIALIAS_GRAY);
    cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
    pango_cairo_context_set_font_options(m_context.get(), options.get());
    pango_context_set_round_glyph_positions(m_context.get(), FALSE);
}

const Face& PangoTextSystem::Engine::faceFor(const std::string& name)
{
    if (const auto known = m_faces.find(name); known != m_faces.end())
        return known->second;
    if (m_faces.size() >= kRememberedFaces)
        m_faces.clear();
    // Pango reads fontconfig's list in a thread of its own. Asking fontconfig before that has ended would read it a second time.
    pango_fc_font_map_get_config(PANGO_FC_FONT_MAP(m_map.get()));
    const ResolvedFont resolved = m_resolver.resolve(validUtf8(name));
    Face face{descriptionOf(resolved.face), {}};
    face.metrics = resolved.pinnedMetrics ? *resolved.pinnedMetrics : ownMetrics(m_map.get(), m_context.get(), face.description.get());
    return m_faces.emplace(name, std::move(face)).first->second;
}

TextLayout PangoTextSystem::Engine::makeLayout(const std::string& text, const Font& font)
{
    TextLayout made;
    if (!isUsableSize(font.size))
        return made;
    made.text = validUtf8(beginning(text));
    const Face& face = faceFor(font.name);
    const double shapedSize = shapedSizeFor(font.size, made.text.size());
    made.scale = font.size / shapedSize;
    const PangoPointer<PangoFontDescription> description(pango_font_description_copy(face.description.get()));
    pango_font_description_set_absolute_size(description.get(), shapedSize * PANGO_SCALE);
    made.layout.reset(pango_layout_new(m_context.get()));
    pango_layout_set_font_description(made.layout.get(), description.get());
    pango_layout_set_text(made.layout.get(), made.text.data(), static_cast<int>(made.text.size()));
    for (const GSList* link = pango_layout_get_lines_readonly(made.layout.get()); link; link = link->next) {
        auto* line = static_cast<PangoLayoutLine*>(link->data);
        clearOffsetsWithoutFont(line);
        PangoRectangle logical{};
        pango_layout_line_get_extents(line, nullptr, &logical);
        const double width = static_cast<double>(logical.width) / PANGO_SCALE * made.scale;
        made.lines.push_back({static_cast<std::size_t>(line->start_index), static_cast<std::size_t>(line->length), width, line});
        made.size.width = std::max(made.size.width, width);
    }
    made.lineHeight = face.metrics.lineHeight() * font.size;
    made.ascender = face.metrics.ascender * font.size;
    made.size.height = made.lineHeight * static_cast<double>(made.lines.size());
    return made;
}

const TextLayout& PangoTextSystem::Engine::layoutFor(const AttributedString& text)
{
    const Font& font = text.attributes().fontOrDefault();
    if (text.string().size() > kLongestRememberedText || !isUsableSize(font.size)) {
        m_longLayout = makeLayout(text.string(), font);
        return m_longLayout;
    }
    if (const auto known = m_byKey.find({font.name, text.string(), font.size}); known != m_byKey.end()) {
        m_layouts.splice(m_layouts.begin(), m_layouts, known->second);
        return m_layouts.front().layout;
    }
    if (m_layouts.size() >= kRememberedLayouts) {
        const RememberedLayout& oldest = m_layouts.back();
        m_byKey.erase({oldest.fontName, oldest.text, oldest.size});
        m_layouts.pop_back();
    }
    m_layouts.push_front({font.name, text.string(), font.size, makeLayout(text.string(), font)});
    const RememberedLayout& newest = m_layouts.front();
    m_byKey.emplace(LayoutKey{newest.fontName, newest.text, newest.size}, m_layouts.begin());
    return newest.layout;
}

PangoTextSystem::PangoTextSystem() : m_engine(std::make_unique<Engine>()) {}

PangoTextSystem::~PangoTextSystem() = default;

std::shared_ptr<const PangoTextSystem> PangoTextSystem::shared()
{
    static const std::shared_ptr<const PangoTextSystem> instance = std::make_shared<PangoTextSystem>();
    return instance;
}

Size PangoTextSystem::size(const AttributedString& text) const
{
    const std::scoped_lock lock(m_engine->mutex);
    return m_engine->layoutFor(text).size;
}

double PangoTextSystem::ascender(const Font& font) const
{
    if (!isUsableSize(font.size))
        return 0.0;
    const std::scoped_lock lock(m_engine->mutex);
    return m_engine->faceFor(font.name).metrics.ascender * font.size;
}

double PangoTextSystem::lineHeight(const Font& font) const
{
    if (!isUsableSize(font.size))
        return 0.0;
    if (const auto pinned = pinnedMetricsOf(validUtf8(font.name)))
        return pinned->lineHeight() * font.size;
    const std::scoped_lock lock(m_engine->mutex);
    return m_engine->faceFor(font.name).metrics.lineHeight() * font.size;
}

void SharedLayouts::withLayout(const AttributedString& text, const std::function<void(const TextLayout&)>& use)
{
    PangoTextSystem::Engine& engine = *PangoTextSystem::shared()->m_engine;
    const std::scoped_lock lock(engine.mutex);
    use(engine.layoutFor(text));
}

} // namespace TOLVGraphing::text

namespace TOLVGraphing {

void installDesktopTextSystem()
{
    setTextSystem(text::PangoTextSystem::shared());
}

} // namespace TOLVGraphing
