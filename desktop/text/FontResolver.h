#pragma once

#include "FontCatalog.h"

#include <atomic>
#include <memory>
#include <optional>
#include <string>

namespace TOLVGraphing::text {

/// The extents of a face in em: baseline to top, baseline to bottom (positive), and the free space below the bottom.
struct FaceMetrics {
    double ascender = 0.0;
    double descender = 0.0;
    double leading = 0.0;

    /// The height of a line in em.
    [[nodiscard]] double lineHeight() const { return ascender + descender + leading; }

    friend bool operator==(const FaceMetrics&, const FaceMetrics&) = default;
};

/// Where a font's name leads to.
struct ResolvedFont {
    FontFace face;
    /// The extents to use in place of the face's own.
    std::optional<FaceMetrics> pinnedMetrics;

    friend bool operator==(const ResolvedFont&, const ResolvedFont&) = default;
};

/// The extents of the library's own faces, whatever is installed; nothing for other names. An empty name means Helvetica.
[[nodiscard]] std::optional<FaceMetrics> pinnedMetricsOf(const std::string& name);

/// Finds the face for a font's name, so that texts are equally wide and high on every machine.
///
/// The library's own faces (HelveticaNeue, HelveticaNeue-Bold, HelveticaNeue-Light, Helvetica and further styles of both families) are the real fonts where they are
/// installed, else Nimbus Sans, regular or bold (from weight 600 on), else Liberation Sans, else the sans-serif font that fontconfig offers, of which one line in the log
/// tells, as it does where no font is installed at all. Their extents are always those of the named faces, since layouts are made for them: HelveticaNeue 0.952 / 0.213 / 0.028 em, Helvetica 0.770 / 0.230 / 0.
///
/// Any other name is the face of that PostScript or full name, else the family of that name, else a family with a style ("Family-Bold", "Family-LightItalic"); what is
/// not installed is left to fontconfig. Such fonts keep their own extents. Safe to use from several threads.
class FontResolver {
public:
    explicit FontResolver(std::shared_ptr<const FontCatalog> catalog = std::make_shared<FontconfigCatalog>());

    /// An empty name means Helvetica.
    [[nodiscard]] ResolvedFont resolve(const std::string& name) const;

private:
    [[nodiscard]] FontFace resolveNamed(const std::string& name, FontFace wanted, NamedFamily family) const;
    [[nodiscard]] FontFace resolveOther(const std::string& name, const FontFace& wanted) const;
    /// One line in the log, the first time.
    void tellOfSubstitute(const std::string& name) const;

    std::shared_ptr<const FontCatalog> m_catalog;
    mutable std::atomic<bool> m_hasLogged = false;
};

} // namespace TOLVGraphing::text
