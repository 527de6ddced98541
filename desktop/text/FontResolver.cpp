#include "FontResolver.h"

#include "TOLVGraphing/platform/foundation/Log.h"

#include <utility>

namespace TOLVGraphing::text {

namespace {

constexpr FaceMetrics kHelveticaNeueMetrics{0.952, 0.213, 0.028};
constexpr FaceMetrics kHelveticaMetrics{0.770, 0.230, 0.0};
constexpr int kLightestBold = 600;

std::string givenName(const std::string& name)
{
    return name.empty() ? "Helvetica" : name;
}

std::optional<FaceMetrics> metricsOf(NamedFamily family)
{
    if (family == NamedFamily::None)
        return std::nullopt;
    return family == NamedFamily::Helvetica ? kHelveticaMetrics : kHelveticaNeueMetrics;
}

} // namespace

std::optional<FaceMetrics> pinnedMetricsOf(const std::string& name)
{
    return metricsOf(namedFamily(faceFromFontName(givenName(name)).family));
}

FontResolver::FontResolver(std::shared_ptr<const FontCatalog> catalog) : m_catalog(std::move(catalog)) {}

ResolvedFont FontResolver::resolve(const std::string& name) const
{
    const std::string given = givenName(name);
    const FontFace wanted = faceFromFontName(given);
    const NamedFamily family = namedFamily(wanted.family);
    if (family == NamedFamily::None)
        return {resolveOther(given, wanted), std::nullopt};
    return {resolveNamed(given, wanted, family), metricsOf(family)};
}

FontFace FontResolver::resolveNamed(const std::string& name, FontFace wanted, NamedFamily family) const
{
    if (auto face = m_catalog->faceNamed(name))
        return *face;
    wanted.family = family == NamedFamily::Helvetica ? "Helvetica" : "Helvetica Neue";
    if (m_catalog->hasFamily(wanted.family))
        return wanted;
    // The substitutes come in two weights.
    wanted.weight = wanted.weight >= kLightestBold ? 700 : 400;
    for (const char* substitute : {"Nimbus Sans", "Liberation Sans"}) {
        wanted.family = substitute;
        if (m_catalog->hasFamily(wanted.family))
            return wanted;
    }
    tellOfSubstitute(name);
    wanted.family = "sans-serif";
    return wanted;
}

void FontResolver::tellOfSubstitute(const std::string& name) const
{
    if (m_hasLogged.exchange(true))
        return;
    if (m_catalog->isEmpty())
        writeLog("No usable font is installed: a box stands for each character");
    else
        writeLog("Neither " + name + " nor Nimbus Sans nor Liberation Sans is installed: texts are set in the system's sans-serif font and may be wider than elsewhere");
}

FontFace FontResolver::resolveOther(const std::string& name, const FontFace& wanted) const
{
    if (auto face = m_catalog->faceNamed(name))
        return *face;
    if (m_catalog->hasFamily(name))
        return {name, 400, false};
    if (m_catalog->isEmpty())
        tellOfSubstitute(name);
    return wanted;
}

} // namespace TOLVGraphing::text
