#include "PostScriptComments.h"

#include "OutputError.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace TOLVGraphing;
using namespace TOLVGraphing::output;

namespace {

std::vector<std::byte> bytesOf(const std::string& text)
{
    std::vector<std::byte> bytes(text.size());
    std::transform(text.begin(), text.end(), bytes.begin(), [](char character) { return static_cast<std::byte>(character); });
    return bytes;
}

std::string rewritten(const std::string& file, const PostScriptHead& head)
{
    const std::vector<std::byte> bytes = withPageComments(bytesOf(file), head);
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

const char* const kFile = "%!PS-Adobe-3.0 EPSF-3.0\n"
                          "%%Creator: someone\n"
                          "%%CreationDate: now\n"
                          "%%BoundingBox: 10 61 30 91\n"
                          "%%EndComments\n"
                          "%%Page: 1 1\n"
                          "%%PageBoundingBox: 10 61 30 91\n"
                          "%%EndPageSetup\n"
                          "(%%BoundingBox: is text here\n) show\n"
                          "%%EOF\n";

} // namespace

TEST(PostScriptComments, theHeadBecomesThePages)
{
    EXPECT_EQ(rewritten(kFile, {{200.5, 100.0}, "Title", "Maker"}),
        "%!PS-Adobe-3.0 EPSF-3.0\n"
        "%%Creator: (Maker)\n"
        "%%Title: (Title)\n"
        "%%BoundingBox: 0 0 201 100\n"
        "%%HiResBoundingBox: 0 0 200.5 100\n"
        "%%EndComments\n"
        "%%Page: 1 1\n"
        "%%PageBoundingBox: 0 0 201 100\n"
        "%%EndPageSetup\n"
        "(%%BoundingBox: is text here\n) show\n"
        "%%EOF\n");
}

TEST(PostScriptComments, titlesAreOneSafeLine)
{
    const std::string file = rewritten(kFile, {{10.0, 10.0}, "a(b)\\ µ\n" + std::string(1000, 'x'), ""});
    EXPECT_NE(file.find("%%Title: (a\\(b\\)\\\\ ??xxx"), std::string::npos);
    EXPECT_LT(file.find(")\n%%BoundingBox"), 260U);
    EXPECT_EQ(file.find("%%Creator"), std::string::npos);
}

TEST(PostScriptComments, aFileWithoutPageSetupIsRefused)
{
    EXPECT_THROW((void)withPageComments(bytesOf("%!PS\nshowpage\n"), {{1.0, 1.0}, "", ""}), OutputError);
    EXPECT_THROW((void)withPageComments({}, {{1.0, 1.0}, "", ""}), OutputError);
}
