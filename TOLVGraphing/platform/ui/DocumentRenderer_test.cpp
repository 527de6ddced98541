#include "DocumentRenderer.h"

#include <tests/support/RecordingServices.h>

#include <gtest/gtest.h>

#include <memory>
#include <thread>
#include <utility>

namespace TOLVGraphing {
namespace {

using testing_support::RecordingRenderer;

TEST(DocumentRenderer, IsTheInstalledOneOrNone)
{
    const auto former = documentRenderer();
    setDocumentRenderer(nullptr);
    EXPECT_EQ(documentRenderer(), nullptr);
    const auto own = std::make_shared<RecordingRenderer>();
    setDocumentRenderer(own);
    EXPECT_EQ(documentRenderer(), own);
    setDocumentRenderer(former);
}

TEST(DocumentRenderer, LivesUntilItsLastUserIsDone)
{
    const auto former = documentRenderer();
    auto own = std::make_shared<RecordingRenderer>();
    const std::weak_ptr<RecordingRenderer> weak = own;
    setDocumentRenderer(std::move(own));
    {
        const auto used = documentRenderer();
        setDocumentRenderer(former);
        EXPECT_FALSE(weak.expired());
    }
    EXPECT_TRUE(weak.expired());
}

TEST(DocumentRenderer, IsTheSameInEveryThread)
{
    const auto own = std::make_shared<RecordingRenderer>();
    const testing_support::RendererScope scope(own);
    std::shared_ptr<const DocumentRenderer> elsewhere;
    std::thread([&] { elsewhere = documentRenderer(); }).join();
    EXPECT_EQ(elsewhere, own);
}

} // namespace
} // namespace TOLVGraphing
