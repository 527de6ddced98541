#include "FontCatalog.h"

#include <fontconfig/fontconfig.h>

#include <cmath>
#include <cstring>
#include <memory>

namespace TOLVGraphing::text {

namespace {

struct FontconfigDeleter {
    void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
    void operator()(FcObjectSet* objects) const { FcObjectSetDestroy(objects); }
    void operator()(FcFontSet* fonts) const { FcFontSetDestroy(fonts); }
};

template <typename Object>
using FontconfigPointer = std::unique_ptr<Object, FontconfigDeleter>;

bool canBeUsed(const FcPattern* font)
{
    FcChar8* format = nullptr;
    if (FcPatternGetString(font, FC_FONTFORMAT, 0, &format) != FcResultMatch)
        return false;
    const char* name = reinterpret_cast<const char*>(format);
    return std::strcmp(name, "TrueType") == 0 || std::strcmp(name, "CFF") == 0;
}

FontFace faceOf(const FcPattern* font)
{
    FontFace face;
    FcChar8* family = nullptr;
    if (FcPatternGetString(font, FC_FAMILY, 0, &family) == FcResultMatch)
        face.family = reinterpret_cast<const char*>(family);
    double weight = 0.0;
    if (FcPatternGetDouble(font, FC_WEIGHT, 0, &weight) == FcResultMatch)
        face.weight = static_cast<int>(std::lround(FcWeightToOpenTypeDouble(weight)));
    int slant = FC_SLANT_ROMAN;
    if (FcPatternGetInteger(font, FC_SLANT, 0, &slant) == FcResultMatch)
        face.isItalic = slant != FC_SLANT_ROMAN;
    return face;
}

/// The first usable font that the pattern fits.
std::optional<FontFace> firstFontFor(const FontconfigPointer<FcPattern>& pattern)
{
    const FontconfigPointer<FcObjectSet> objects(FcObjectSetBuild(FC_FAMILY, FC_WEIGHT, FC_SLANT, FC_FONTFORMAT, nullptr));
    if (!pattern || !objects)
        return std::nullopt;
    const FontconfigPointer<FcFontSet> fonts(FcFontList(nullptr, pattern.get(), objects.get()));
    if (!fonts)
        return std::nullopt;
    for (int i = 0; i < fonts->nfont; ++i) {
        if (canBeUsed(fonts->fonts[i]))
            return faceOf(fonts->fonts[i]);
    }
    return std::nullopt;
}

/// The first usable outline font whose `property` is exactly the value.
std::optional<FontFace> firstFontWith(const char* property, const std::string& value)
{
    const FontconfigPointer<FcPattern> pattern(FcPatternCreate());
    if (!pattern || value.empty())
        return std::nullopt;
    FcPatternAddString(pattern.get(), property, reinterpret_cast<const FcChar8*>(value.c_str()));
    FcPatternAddBool(pattern.get(), FC_OUTLINE, FcTrue);
    return firstFontFor(pattern);
}

} // namespace

bool FontconfigCatalog::hasFamily(const std::string& family) const
{
    return firstFontWith(FC_FAMILY, family).has_value();
}

std::optional<FontFace> FontconfigCatalog::faceNamed(const std::string& name) const
{
    if (auto face = firstFontWith(FC_POSTSCRIPT_NAME, name))
        return face;
    return firstFontWith(FC_FULLNAME, name);
}

bool FontconfigCatalog::isEmpty() const
{
    return !firstFontFor(FontconfigPointer<FcPattern>(FcPatternCreate()));
}

} // namespace TOLVGraphing::text
