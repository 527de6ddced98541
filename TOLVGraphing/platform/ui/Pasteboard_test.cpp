#include "Pasteboard.h"

#include <tests/support/RecordingServices.h>

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace TOLVGraphing {
namespace {

using testing_support::bytesOf;
using Types = std::vector<std::string>;
using Data = Pasteboard::Data;

TEST(MemoryPasteboard, HasNothingAtFirst)
{
    MemoryPasteboard pasteboard;
    EXPECT_TRUE(pasteboard.types().empty());
    EXPECT_EQ(pasteboard.dataForType("text/plain"), std::nullopt);
    EXPECT_FALSE(pasteboard.setDataForType(bytesOf("a"), "text/plain"));
    EXPECT_EQ(pasteboard.dataForType("text/plain"), std::nullopt);
}

TEST(MemoryPasteboard, KeepsTheOrderOfItsTypes)
{
    MemoryPasteboard pasteboard;
    pasteboard.declareTypes({"c", "a", "b"});
    EXPECT_EQ(pasteboard.types(), (Types{"c", "a", "b"}));
    pasteboard.addTypes({"a", "0", "c", "d", "0"});
    EXPECT_EQ(pasteboard.types(), (Types{"c", "a", "b", "0", "d"}));
    pasteboard.declareTypes({"b", "b"});
    EXPECT_EQ(pasteboard.types(), Types{"b"});
}

TEST(MemoryPasteboard, DeclaringBeginsNewContents)
{
    MemoryPasteboard pasteboard;
    pasteboard.declareTypes({"a", "b"});
    EXPECT_TRUE(pasteboard.setDataForType(bytesOf("old a"), "a"));
    EXPECT_TRUE(pasteboard.setDataForType(bytesOf("old b"), "b"));
    pasteboard.declareTypes({"a"});
    EXPECT_EQ(pasteboard.dataForType("a"), std::nullopt);
    EXPECT_EQ(pasteboard.dataForType("b"), std::nullopt);
    EXPECT_FALSE(pasteboard.setDataForType(bytesOf("new b"), "b"));
}

TEST(MemoryPasteboard, AddingTypesKeepsTheData)
{
    MemoryPasteboard pasteboard;
    pasteboard.declareTypes({"a"});
    pasteboard.setDataForType(bytesOf("data"), "a");
    pasteboard.addTypes({"b", "a"});
    EXPECT_EQ(pasteboard.dataForType("a"), bytesOf("data"));
    EXPECT_EQ(pasteboard.dataForType("b"), std::nullopt);
}

TEST(MemoryPasteboard, NoDataAndEmptyDataAreTwoThings)
{
    MemoryPasteboard pasteboard;
    pasteboard.declareTypes({"a", "b"});
    pasteboard.setDataForType({}, "a");
    EXPECT_EQ(pasteboard.dataForType("a"), Data());
    EXPECT_EQ(pasteboard.dataForType("b"), std::nullopt);
}

TEST(MemoryPasteboard, ProvidersAreAskedOnceAndOnlyWhenSomebodyPastes)
{
    MemoryPasteboard pasteboard;
    int asked = 0;
    const auto provider = [&] {
        ++asked;
        return bytesOf("provided");
    };
    pasteboard.declareTypes({"a", "b"});
    EXPECT_TRUE(pasteboard.setProviderForType(provider, "a"));
    EXPECT_FALSE(pasteboard.setProviderForType(provider, "c"));
    pasteboard.finish();
    EXPECT_EQ(asked, 0);
    EXPECT_EQ(pasteboard.dataForType("b"), std::nullopt);
    EXPECT_EQ(asked, 0);
    EXPECT_EQ(pasteboard.dataForType("a"), bytesOf("provided"));
    EXPECT_EQ(pasteboard.dataForType("a"), bytesOf("provided"));
    EXPECT_EQ(asked, 1);
}

TEST(MemoryPasteboard, WhatIsSetLastCounts)
{
    MemoryPasteboard pasteboard;
    pasteboard.declareTypes({"a"});
    pasteboard.setDataForType(bytesOf("first"), "a");
    pasteboard.setProviderForType([] { return bytesOf("second"); }, "a");
    EXPECT_EQ(pasteboard.dataForType("a"), bytesOf("second"));
    pasteboard.setProviderForType([] { return bytesOf("third"); }, "a");
    pasteboard.setDataForType(bytesOf("fourth"), "a");
    EXPECT_EQ(pasteboard.dataForType("a"), bytesOf("fourth"));
    pasteboard.setProviderForType(nullptr, "a");
    EXPECT_EQ(pasteboard.dataForType("a"), std::nullopt);
}

TEST(MemoryPasteboard, ProvidersAreLetGoWithTheContents)
{
    MemoryPasteboard pasteboard;
    auto held = std::make_shared<int>(1);
    const std::weak_ptr<int> weak = held;
    pasteboard.declareTypes({"a"});
    pasteboard.setProviderForType([held = std::move(held)] { return Data(static_cast<std::size_t>(*held)); }, "a");
    EXPECT_FALSE(weak.expired());
    pasteboard.declareTypes({});
    EXPECT_TRUE(weak.expired());
}

TEST(MemoryPasteboard, AProviderThatHasAnsweredIsLetGo)
{
    MemoryPasteboard pasteboard;
    auto held = std::make_shared<int>(3);
    const std::weak_ptr<int> weak = held;
    pasteboard.declareTypes({"a"});
    pasteboard.setProviderForType([held = std::move(held)] { return Data(static_cast<std::size_t>(*held)); }, "a");
    EXPECT_EQ(pasteboard.dataForType("a"), Data(3));
    EXPECT_TRUE(weak.expired());
}

TEST(Pasteboard, TheGeneralOneIsInMemoryUntilAHostInstallsItsOwn)
{
    const auto former = Pasteboard::generalPasteboard();
    ASSERT_NE(former, nullptr);
    EXPECT_EQ(Pasteboard::generalPasteboard(), former);
    const auto own = std::make_shared<MemoryPasteboard>();
    Pasteboard::setGeneralPasteboard(own);
    EXPECT_EQ(Pasteboard::generalPasteboard(), own);
    Pasteboard::setGeneralPasteboard(nullptr);
    ASSERT_NE(Pasteboard::generalPasteboard(), nullptr);
    EXPECT_NE(Pasteboard::generalPasteboard(), own);
    Pasteboard::setGeneralPasteboard(former);
}

} // namespace
} // namespace TOLVGraphing
