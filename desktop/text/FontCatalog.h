#pragma once

#include "FontName.h"

#include <optional>
#include <string>

namespace TOLVGraphing::text {

/// The outline fonts that are installed, as far as they can be shaped and embedded (TrueType and CFF; Type 1 and bitmap fonts do not count).
class FontCatalog {
public:
    virtual ~FontCatalog() = default;

    /// True when a font of exactly this family is installed, letter case aside.
    [[nodiscard]] virtual bool hasFamily(const std::string& family) const = 0;
    /// The installed face with exactly this PostScript name ("NimbusSans-Bold") or full name ("Nimbus Sans Bold").
    [[nodiscard]] virtual std::optional<FontFace> faceNamed(const std::string& name) const = 0;
    /// True when not a single font is installed.
    [[nodiscard]] virtual bool isEmpty() const = 0;
};

/// What fontconfig lists.
class FontconfigCatalog final : public FontCatalog {
public:
    [[nodiscard]] bool hasFamily(const std::string& family) const override;
    [[nodiscard]] std::optional<FontFace> faceNamed(const std::string& name) const override;
    [[nodiscard]] bool isEmpty() const override;
};

} // namespace TOLVGraphing::text
