#include "FontResolver.h"

#include "TOLVGraphing/platform/foundation/Log.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <vector>

using namespace TOLVGraphing;
using namespace TOLVGraphing::text;

namespace {

/// A list of fonts that a test makes up.
class ListedFonts final : public FontCatalog {
public:
    explicit ListedFonts(std::set<std::string> families, std::map<std::string, FontFace> faces = {}) : m_families(std::move(families)), m_faces(std::move(faces)) {}

    bool hasFamily(const std::string& family) const override { return m_families.contains(family); }
    std::optional<FontFace> faceNamed(const std::string& name) const override
    {
        const auto found = m_faces.find(name);
        return found == m_faces.end() ? std::nullopt : std::optional(found->second);
    }
    bool isEmpty() const override { return m_families.empty() && m_faces.empty(); }

private:
    std::set<std::string> m_families;
    std::map<std::string, FontFace> m_faces;
};

FontResolver resolverFor(std::set<std::string> families, std::map<std::string, FontFace> faces = {})
{
    return FontResolver(std::make_shared<ListedFonts>(std::move(families), std::move(faces)));
}

constexpr FaceMetrics kNeue{0.952, 0.213, 0.028};
constexpr FaceMetrics kPlain{0.770, 0.230, 0.0};

} // namespace

TEST(FontResolver, namedFacesAreNimbusSansWithTheirOwnExtents)
{
    const FontResolver resolver = resolverFor({"Nimbus Sans", "Liberation Sans"});
    EXPECT_EQ(resolver.resolve("HelveticaNeue"), (ResolvedFont{{"Nimbus Sans", 400, false}, kNeue}));
    EXPECT_EQ(resolver.resolve("HelveticaNeue-Light"), (ResolvedFont{{"Nimbus Sans", 400, false}, kNeue}));
    EXPECT_EQ(resolver.resolve("HelveticaNeue-Bold"), (ResolvedFont{{"Nimbus Sans", 700, false}, kNeue}));
    EXPECT_EQ(resolver.resolve("Helvetica"), (ResolvedFont{{"Nimbus Sans", 400, false}, kPlain}));
    EXPECT_EQ(resolver.resolve("Helvetica-BoldOblique"), (ResolvedFont{{"Nimbus Sans", 700, true}, kPlain}));
    EXPECT_EQ(resolver.resolve(""), (ResolvedFont{{"Nimbus Sans", 400, false}, kPlain}));
}

TEST(FontResolver, pinnedExtentsNeedNoFonts)
{
    EXPECT_EQ(pinnedMetricsOf("HelveticaNeue-Light"), (FaceMetrics{0.952, 0.213, 0.028}));
    EXPECT_EQ(pinnedMetricsOf("Helvetica Neue"), (FaceMetrics{0.952, 0.213, 0.028}));
    EXPECT_EQ(pinnedMetricsOf("Helvetica-Bold"), (FaceMetrics{0.770, 0.230, 0.0}));
    EXPECT_EQ(pinnedMetricsOf(""), (FaceMetrics{0.770, 0.230, 0.0}));
    EXPECT_EQ(pinnedMetricsOf("DejaVu Sans"), std::nullopt);
}

TEST(FontResolver, aRealFontOfTheNameWins)
{
    EXPECT_EQ(resolverFor({"Helvetica Neue", "Nimbus Sans"}).resolve("HelveticaNeue-Light"), (ResolvedFont{{"Helvetica Neue", 300, false}, kNeue}));
    EXPECT_EQ(resolverFor({"Nimbus Sans"}, {{"HelveticaNeue-Bold", {"Helvetica Neue LT", 700, false}}}).resolve("HelveticaNeue-Bold"),
        (ResolvedFont{{"Helvetica Neue LT", 700, false}, kNeue}));
}

TEST(FontResolver, withoutNimbusComesLiberationAndThenTheSystemWithOneLineInTheLog)
{
    std::vector<std::string> lines;
    const LogSinkScope sink([&](std::string_view line) { lines.emplace_back(line); });
    EXPECT_EQ(resolverFor({"Liberation Sans"}).resolve("HelveticaNeue-Bold"), (ResolvedFont{{"Liberation Sans", 700, false}, kNeue}));
    EXPECT_TRUE(lines.empty());
    const FontResolver bare = resolverFor({"DejaVu Sans"});
    EXPECT_EQ(bare.resolve("HelveticaNeue"), (ResolvedFont{{"sans-serif", 400, false}, kNeue}));
    EXPECT_EQ(bare.resolve("Helvetica"), (ResolvedFont{{"sans-serif", 400, false}, kPlain}));
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0], "Neither HelveticaNeue nor Nimbus Sans nor Liberation Sans is installed: texts are set in the system's sans-serif font and may be wider than elsewhere");
}

TEST(FontResolver, withoutAnyFontOneLineInTheLogSaysSo)
{
    std::vector<std::string> lines;
    const LogSinkScope sink([&](std::string_view line) { lines.emplace_back(line); });
    const FontResolver bare = resolverFor({});
    EXPECT_EQ(bare.resolve("Odd-Bold"), (ResolvedFont{{"Odd", 700, false}, std::nullopt}));
    EXPECT_EQ(bare.resolve("HelveticaNeue"), (ResolvedFont{{"sans-serif", 400, false}, kNeue}));
    EXPECT_EQ(bare.resolve("Helvetica"), (ResolvedFont{{"sans-serif", 400, false}, kPlain}));
    EXPECT_EQ(lines, std::vector<std::string>{"No usable font is installed: a box stands for each character"});
}

TEST(FontResolver, otherNamesKeepTheirOwnExtents)
{
    const FontResolver resolver = resolverFor({"DejaVu Sans", "Odd-Bold"}, {{"DejaVuSans-Bold", {"DejaVu Sans", 700, false}}});
    EXPECT_EQ(resolver.resolve("DejaVuSans-Bold"), (ResolvedFont{{"DejaVu Sans", 700, false}, std::nullopt}));
    EXPECT_EQ(resolver.resolve("DejaVu Sans"), (ResolvedFont{{"DejaVu Sans", 400, false}, std::nullopt}));
    EXPECT_EQ(resolver.resolve("Odd-Bold"), (ResolvedFont{{"Odd-Bold", 400, false}, std::nullopt}));
    EXPECT_EQ(resolver.resolve("Absent-BoldItalic"), (ResolvedFont{{"Absent", 700, true}, std::nullopt}));
}
