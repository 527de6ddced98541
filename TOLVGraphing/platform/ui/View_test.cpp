#include "View.h"

#include "../foundation/Exception.h"
#include "../graphics/CurrentContext.h"
#include "../graphics/DrawingContext.h"
#include "../graphics/RecordingContext.h"
#include "../text/AttributedString.h"

#include <tests/support/DrawnLines.h>
#include <tests/support/PlacedDrawing.h>
#include <tests/support/RecordingServices.h>

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace TOLVGraphing {
namespace {

using testing_support::EvenTextScope;
using testing_support::linesWith;
using testing_support::PlacedMark;
using testing_support::placedMarks;
using testing_support::RecordingRenderer;
using testing_support::RendererScope;
using testing_support::textOf;
using Lines = std::vector<std::string>;
using Rects = std::vector<Rect>;

enum class Growth { Upwards, Downwards };

/// A view that notes what it is asked to draw, and does what a test says while it draws.
class ProbeView final : public View {
public:
    explicit ProbeView(const Rect& frame, Growth growth = Growth::Upwards) : View(frame), m_growth(growth) {}
    ~ProbeView() override
    {
        if (atEnd)
            atEnd();
    }

    [[nodiscard]] bool isFlipped() const override { return m_growth == Growth::Downwards; }
    void drawRect(const Rect& dirtyRect) override
    {
        asked.push_back(dirtyRect);
        if (drawing)
            drawing();
    }

    Rects asked;
    std::function<void()> drawing;
    std::function<void()> atEnd;

private:
    Growth m_growth;
};

std::shared_ptr<ProbeView> probe(const Rect& frame, Growth growth = Growth::Upwards)
{
    return std::make_shared<ProbeView>(frame, growth);
}

Lines displayed(View& view)
{
    RecordingContext context;
    view.displayInContext(context);
    EXPECT_EQ(context.depth(), 0);
    EXPECT_FALSE(context.hasUnmatchedRestore());
    return context.calls();
}

Lines displayed(View& view, const Rect& dirtyRect)
{
    RecordingContext context;
    view.displayInContext(context, dirtyRect);
    EXPECT_EQ(context.depth(), 0);
    EXPECT_FALSE(context.hasUnmatchedRestore());
    return context.calls();
}

/// Draws a rectangle and the text "t", 6 by 12 points, with its corner at the rectangle's origin.
std::function<void()> markAt(const Rect& rect)
{
    return [rect] {
        currentContext()->fillRect(rect);
        AttributedString("t").drawAtPoint(rect.origin);
    };
}

// Geometry.

TEST(View, ItsBoundsHaveTheSizeOfItsFrame)
{
    View view({10.0, 20.0, 30.0, 40.0});
    EXPECT_EQ(view.frame(), Rect(10.0, 20.0, 30.0, 40.0));
    EXPECT_EQ(view.bounds(), Rect(0.0, 0.0, 30.0, 40.0));
    view.setFrameSize({5.0, 6.0});
    EXPECT_EQ(view.frame(), Rect(10.0, 20.0, 5.0, 6.0));
    view.setBoundsOrigin({-1.0, 2.0});
    view.setFrame({1.0, 2.0, 7.0, 8.0});
    EXPECT_EQ(view.bounds(), Rect(-1.0, 2.0, 7.0, 8.0));
}

TEST(View, IsDrawnClippedToItsBounds)
{
    const auto view = probe({10.0, 20.0, 30.0, 40.0});
    view->drawing = [] { currentContext()->fillRect({1.0, 2.0, 3.0, 4.0}); };
    EXPECT_EQ(displayed(*view), (Lines{"save", "transform [1 0 0 1 0 0]", "save", "clip M 0 0 L 30 0 L 30 40 L 0 40 Z", "fill M 1 2 L 4 2 L 4 6 L 1 6 Z", "restore", "restore"}));
    EXPECT_EQ(view->asked, (Rects{{0.0, 0.0, 30.0, 40.0}}));
}

TEST(View, ThatIsFlippedGrowsDownwardsFromItsUpperEdge)
{
    const auto view = probe({10.0, 20.0, 30.0, 40.0}, Growth::Downwards);
    view->drawing = [] { currentContext()->fillRect({1.0, 2.0, 3.0, 4.0}); };
    EXPECT_EQ(displayed(*view), (Lines{"save", "transform [1 0 0 -1 0 40]", "save", "clip M 0 0 L 30 0 L 30 40 L 0 40 Z", "fill M 1 2 L 4 2 L 4 6 L 1 6 Z", "restore", "restore"}));
}

TEST(View, OfAnotherBoundsOriginShowsAnotherPartOfItsContents)
{
    struct Row {
        Growth growth;
        Rect shape;
        Point text;
    };
    // The frame is 40 high; the shape's upper edge is 10 above the bounds' origin, or its lower one 10 below it.
    const Row rows[] = {{Growth::Upwards, {3.0, 6.0, 3.0, 4.0}, {3.0, 6.0}}, {Growth::Downwards, {3.0, 30.0, 3.0, 4.0}, {3.0, 22.0}}};
    const EvenTextScope text;
    for (const Row& row : rows) {
        const auto view = probe({0.0, 0.0, 30.0, 40.0}, row.growth);
        view->setBoundsOrigin({100.0, 200.0});
        view->drawing = markAt({103.0, 206.0, 3.0, 4.0});
        const auto marks = placedMarks(displayed(*view));
        ASSERT_EQ(marks.size(), 2U);
        EXPECT_EQ(marks[0].rect, row.shape);
        EXPECT_EQ(marks[0].clip, Rect(0.0, 0.0, 30.0, 40.0));
        EXPECT_EQ(marks[1].rect.origin, row.text);
        EXPECT_EQ(view->asked, (Rects{{100.0, 200.0, 30.0, 40.0}}));
    }
}

TEST(View, PlacesItsSubviewsWhicheverWayEachGrows)
{
    struct Row {
        Growth holder;
        Growth held;
        Rect shape;
        Point text;
        Rect clip;
    };
    // The holder is 80 high. The held view's frame runs from 20 to 60 of the holder's y, which on the page is 20...60 either way. Its mark is at 6...10 of its own y, and a text of
    // height 12 stands on its point or hangs below it.
    const Rect clip(10.0, 20.0, 30.0, 40.0);
    const Row rows[] = {
        // clang-format off
        {Growth::Upwards,   Growth::Upwards,   {15.0, 26.0, 3.0, 4.0}, {15.0, 26.0}, clip},
        {Growth::Upwards,   Growth::Downwards, {15.0, 50.0, 3.0, 4.0}, {15.0, 42.0}, clip},
        {Growth::Downwards, Growth::Upwards,   {15.0, 26.0, 3.0, 4.0}, {15.0, 26.0}, clip},
        {Growth::Downwards, Growth::Downwards, {15.0, 50.0, 3.0, 4.0}, {15.0, 42.0}, clip},
        // clang-format on
    };
    const EvenTextScope text;
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.holder == Growth::Upwards ? "upwards" : "downwards") + (row.held == Growth::Upwards ? ", upwards" : ", downwards"));
        const auto holder = probe({3.0, 4.0, 100.0, 80.0}, row.holder);
        const auto held = probe({10.0, 20.0, 30.0, 40.0}, row.held);
        holder->addSubview(held);
        held->drawing = markAt({5.0, 6.0, 3.0, 4.0});
        const auto marks = placedMarks(displayed(*holder));
        ASSERT_EQ(marks.size(), 2U);
        EXPECT_EQ(marks[0].rect, row.shape);
        EXPECT_EQ(marks[0].clip, row.clip);
        EXPECT_EQ(marks[1].rect.origin, row.text);
        EXPECT_TRUE(marks[1].isUpright);
    }
}

TEST(View, ThatIsNotInTheMiddleOfItsHolderIsMeasuredFromTheHoldersOwnOrigin)
{
    struct Row {
        Growth holder;
        Rect shape;
    };
    // At 10 of the holder's y, 20 high, in a holder 100 high: on the page from 10, or from 70.
    const Row rows[] = {{Growth::Upwards, {7.0, 15.0, 1.0, 2.0}}, {Growth::Downwards, {7.0, 75.0, 1.0, 2.0}}};
    for (const Row& row : rows) {
        const auto holder = probe({0.0, 0.0, 50.0, 100.0}, row.holder);
        const auto held = probe({5.0, 10.0, 30.0, 20.0});
        holder->addSubview(held);
        held->drawing = [] { currentContext()->fillRect({2.0, 5.0, 1.0, 2.0}); };
        const auto marks = placedMarks(displayed(*holder));
        ASSERT_EQ(marks.size(), 1U);
        EXPECT_EQ(marks[0].rect, row.shape);
    }
}

TEST(View, PlacesSubviewsOfSubviewsAndOfMovedBounds)
{
    const auto page = probe({0.0, 0.0, 200.0, 100.0}, Growth::Downwards);
    const auto middle = probe({20.0, 10.0, 100.0, 50.0});
    const auto inner = probe({110.0, 220.0, 40.0, 10.0}, Growth::Downwards);
    page->addSubview(middle);
    middle->addSubview(inner);
    middle->setBoundsOrigin({100.0, 200.0});
    inner->drawing = [] { currentContext()->fillRect({1.0, 2.0, 3.0, 4.0}); };
    const auto marks = placedMarks(displayed(*page));
    ASSERT_EQ(marks.size(), 1U);
    // The middle view is 40...90 on the page; the inner one 20 above its lower edge and 10 right of its left one.
    EXPECT_EQ(marks[0].clip, Rect(30.0, 60.0, 40.0, 10.0));
    EXPECT_EQ(marks[0].rect, Rect(31.0, 64.0, 3.0, 4.0));
}

TEST(View, CutsItsSubviewsOffAtItsOwnBounds)
{
    const auto holder = probe({0.0, 0.0, 100.0, 80.0});
    const auto held = probe({90.0, -10.0, 30.0, 40.0});
    holder->addSubview(held);
    held->drawing = [] { currentContext()->fillRect({0.0, 0.0, 30.0, 40.0}); };
    const auto marks = placedMarks(displayed(*holder));
    ASSERT_EQ(marks.size(), 1U);
    EXPECT_EQ(marks[0].rect, Rect(90.0, -10.0, 30.0, 40.0));
    EXPECT_EQ(marks[0].clip, Rect(90.0, 0.0, 10.0, 30.0));
}

TEST(View, ItsClipIsNotWidenedByAPathThatWasLeftBehind)
{
    const auto holder = probe({0.0, 0.0, 100.0, 80.0});
    const auto held = probe({10.0, 10.0, 20.0, 20.0});
    holder->addSubview(held);
    holder->drawing = [] { currentContext()->addRect({0.0, 0.0, 100.0, 80.0}); };
    held->drawing = [] { currentContext()->fillRect({0.0, 0.0, 1.0, 1.0}); };
    const auto marks = placedMarks(displayed(*holder));
    ASSERT_EQ(marks.size(), 1U);
    EXPECT_EQ(marks[0].clip, Rect(10.0, 10.0, 20.0, 20.0));
}

TEST(View, IsDrawnBeforeItsSubviewsAndTheseFromBackToFront)
{
    std::string order;
    const auto holder = probe({0.0, 0.0, 100.0, 80.0});
    const auto back = probe({0.0, 0.0, 10.0, 10.0});
    const auto front = probe({0.0, 0.0, 10.0, 10.0});
    holder->drawing = [&] { order += "holder "; };
    back->drawing = [&] { order += "back "; };
    front->drawing = [&] { order += "front "; };
    holder->addSubview(back);
    holder->addSubview(front);
    displayed(*holder);
    EXPECT_EQ(order, "holder back front ");
}

TEST(View, ASubviewGivenWhileDrawingIsDrawnAtOnce)
{
    const auto holder = probe({0.0, 0.0, 100.0, 80.0});
    const auto held = probe({0.0, 0.0, 10.0, 10.0});
    holder->drawing = [&] { holder->addSubview(held); };
    displayed(*holder);
    EXPECT_EQ(held->asked.size(), 1U);
}

TEST(View, ASubviewMayLeaveWhileItIsDrawn)
{
    const auto holder = probe({0.0, 0.0, 100.0, 80.0});
    auto leaving = probe({0.0, 0.0, 10.0, 10.0});
    const auto staying = probe({0.0, 0.0, 10.0, 10.0});
    holder->addSubview(leaving);
    holder->addSubview(staying);
    leaving->drawing = [view = std::weak_ptr<View>(leaving)] { view.lock()->removeFromSuperview(); };
    const std::weak_ptr<View> left = leaving;
    leaving.reset();
    displayed(*holder);
    EXPECT_EQ(staying->asked.size(), 1U);
    EXPECT_TRUE(left.expired());
}

// Parts.

TEST(View, DrawsOnlyThePartThatIsDirty)
{
    const auto view = probe({0.0, 0.0, 100.0, 80.0});
    view->drawing = [] { currentContext()->fillRect({0.0, 0.0, 100.0, 80.0}); };
    const auto marks = placedMarks(displayed(*view, {90.0, 10.0, 50.0, 20.0}));
    EXPECT_EQ(view->asked, (Rects{{90.0, 10.0, 10.0, 20.0}}));
    ASSERT_EQ(marks.size(), 1U);
    EXPECT_EQ(marks[0].clip, Rect(90.0, 10.0, 10.0, 20.0));
}

TEST(View, TheDirtyPartOfAFlippedViewIsInItsOwnCoordinates)
{
    const auto view = probe({0.0, 0.0, 100.0, 80.0}, Growth::Downwards);
    view->drawing = [] { currentContext()->fillRect({0.0, 0.0, 100.0, 80.0}); };
    const auto marks = placedMarks(displayed(*view, {0.0, 0.0, 100.0, 20.0}));
    EXPECT_EQ(view->asked, (Rects{{0.0, 0.0, 100.0, 20.0}}));
    ASSERT_EQ(marks.size(), 1U);
    EXPECT_EQ(marks[0].clip, Rect(0.0, 60.0, 100.0, 20.0));
}

TEST(View, SubviewsThatTheDirtyPartTouchesDrawThemselvesWholeAndTheOthersNotAtAll)
{
    const auto holder = probe({0.0, 0.0, 100.0, 80.0});
    const auto touched = probe({10.0, 10.0, 20.0, 20.0});
    const auto beside = probe({30.0, 10.0, 20.0, 20.0});
    holder->addSubview(touched);
    holder->addSubview(beside);
    touched->drawing = [] { currentContext()->fillRect({0.0, 0.0, 20.0, 20.0}); };
    const auto marks = placedMarks(displayed(*holder, {20.0, 0.0, 10.0, 15.0}));
    EXPECT_EQ(touched->asked, (Rects{{0.0, 0.0, 20.0, 20.0}}));
    EXPECT_TRUE(beside->asked.empty());
    ASSERT_EQ(marks.size(), 1U);
    EXPECT_EQ(marks[0].clip, Rect(20.0, 10.0, 10.0, 5.0));
}

TEST(View, NothingIsDrawnWhereThereIsNothingToPaint)
{
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    const Rect parts[] = {{}, {10.0, 10.0, -5.0, 5.0}, {100.0, 0.0, 10.0, 10.0}, {0.0, 0.0, kNaN, 10.0}, {kNaN, 0.0, 10.0, 10.0}};
    for (const Rect& part : parts) {
        const auto view = probe({0.0, 0.0, 100.0, 80.0});
        displayed(*view, part);
        EXPECT_TRUE(view->asked.empty()) << toString(part);
    }
    for (const Size size : {Size{0.0, 10.0}, Size{10.0, -1.0}, Size{kNaN, 10.0}}) {
        const auto view = probe({{}, size});
        displayed(*view);
        EXPECT_TRUE(view->asked.empty()) << toString(size);
    }
}

TEST(View, ByItselfDrawsNothing)
{
    View view({0.0, 0.0, 10.0, 10.0});
    EXPECT_TRUE(placedMarks(displayed(view)).empty());
}

// The drawing environment.

TEST(View, DrawsWithTheContextAndItsOwnDirectionInForce)
{
    RecordingContext context;
    const auto holder = probe({0.0, 0.0, 100.0, 80.0}, Growth::Downwards);
    const auto held = probe({0.0, 0.0, 100.0, 80.0});
    holder->addSubview(held);
    bool holderWasRight = false;
    bool heldWasRight = false;
    holder->drawing = [&] { holderWasRight = currentContext() == &context && coordinatesAreFlipped(); };
    held->drawing = [&] { heldWasRight = currentContext() == &context && !coordinatesAreFlipped(); };
    holder->displayInContext(context);
    EXPECT_TRUE(holderWasRight);
    EXPECT_TRUE(heldWasRight);
    EXPECT_EQ(currentContext(), nullptr);
    EXPECT_FALSE(coordinatesAreFlipped());
}

TEST(View, AnExceptionWhileDrawingRestoresEverything)
{
    RecordingContext context;
    const auto holder = probe({0.0, 0.0, 100.0, 80.0}, Growth::Downwards);
    const auto held = probe({0.0, 0.0, 100.0, 80.0}, Growth::Downwards);
    holder->addSubview(held);
    held->drawing = [] { throw std::runtime_error("no"); };
    EXPECT_THROW(holder->displayInContext(context), std::runtime_error);
    EXPECT_EQ(context.depth(), 0);
    EXPECT_FALSE(context.hasUnmatchedRestore());
    EXPECT_EQ(currentContext(), nullptr);
    EXPECT_FALSE(coordinatesAreFlipped());
}

// Redisplay.

/// A view and how often it asked for redisplay.
class ViewRedisplay : public testing::Test {
protected:
    ViewRedisplay()
    {
        view->setRedisplayHandler([this] { ++requests; });
    }

    std::shared_ptr<ProbeView> view = probe({0.0, 0.0, 100.0, 80.0});
    int requests = 0;
};

TEST_F(ViewRedisplay, IsNeededFromTheBeginningUntilTheFirstDisplay)
{
    EXPECT_TRUE(view->needsDisplay());
    displayed(*view);
    EXPECT_FALSE(view->needsDisplay());
    view->setNeedsDisplay();
    EXPECT_TRUE(view->needsDisplay());
    EXPECT_EQ(requests, 1);
}

TEST_F(ViewRedisplay, RequestsAreCollectedUntilTheNextDisplay)
{
    view->setNeedsDisplay();
    view->setNeedsDisplay();
    EXPECT_EQ(requests, 1);
    displayed(*view);
    EXPECT_EQ(requests, 1);
    view->setNeedsDisplay();
    view->setNeedsDisplay();
    EXPECT_EQ(requests, 2);
}

TEST_F(ViewRedisplay, ARequestMadeWhileDrawingIsANewOne)
{
    view->setNeedsDisplay();
    view->drawing = [&] {
        view->setNeedsDisplay();
        view->setNeedsDisplay();
    };
    displayed(*view);
    EXPECT_EQ(requests, 2);
    EXPECT_TRUE(view->needsDisplay());
    view->drawing = nullptr;
    displayed(*view);
    EXPECT_EQ(requests, 2);
    EXPECT_FALSE(view->needsDisplay());
}

TEST_F(ViewRedisplay, OfASubviewIsAskedOfTheOutermostView)
{
    const auto middle = probe({0.0, 0.0, 50.0, 50.0});
    const auto inner = probe({0.0, 0.0, 10.0, 10.0});
    int innerRequests = 0;
    inner->setRedisplayHandler([&] { ++innerRequests; });
    middle->addSubview(inner);
    view->addSubview(middle);
    displayed(*view);
    requests = 0;
    inner->setNeedsDisplay();
    middle->setNeedsDisplay();
    EXPECT_EQ(requests, 1);
    EXPECT_EQ(innerRequests, 0);
    EXPECT_TRUE(inner->needsDisplay());
    EXPECT_TRUE(middle->needsDisplay());
    EXPECT_FALSE(view->needsDisplay());
    displayed(*view);
    EXPECT_FALSE(inner->needsDisplay());
    EXPECT_FALSE(middle->needsDisplay());
}

TEST_F(ViewRedisplay, OfASubviewThatIsAskedWhileDrawingIsANewRequest)
{
    const auto held = probe({0.0, 0.0, 50.0, 50.0});
    view->addSubview(held);
    requests = 0;
    held->drawing = [&] { held->setNeedsDisplay(); };
    displayed(*view);
    EXPECT_EQ(requests, 1);
    held->drawing = nullptr;
    displayed(*view);
    EXPECT_EQ(requests, 1);
}

TEST_F(ViewRedisplay, IsAskedForByAnotherFrameOrBoundsOriginOnly)
{
    view->setFrame({0.0, 0.0, 100.0, 80.0});
    view->setFrameSize({100.0, 80.0});
    view->setBoundsOrigin({0.0, 0.0});
    EXPECT_EQ(requests, 0);
    view->setFrameSize({100.0, 81.0});
    EXPECT_EQ(requests, 1);
    displayed(*view);
    view->setFrame({1.0, 0.0, 100.0, 81.0});
    EXPECT_EQ(requests, 2);
    displayed(*view);
    view->setBoundsOrigin({0.0, 1.0});
    EXPECT_EQ(requests, 3);
}

TEST_F(ViewRedisplay, IsAskedForBySubviewsThatComeAndGo)
{
    const auto held = probe({0.0, 0.0, 50.0, 50.0});
    view->addSubview(held);
    EXPECT_EQ(requests, 1);
    displayed(*view);
    held->removeFromSuperview();
    EXPECT_EQ(requests, 2);
    displayed(*view);
    held->removeFromSuperview();
    held->setNeedsDisplay();
    EXPECT_EQ(requests, 2);
}

TEST_F(ViewRedisplay, ANewHandlerIsToldOfTheNextRequest)
{
    view->setNeedsDisplay();
    int toldNew = 0;
    view->setRedisplayHandler([&] { ++toldNew; });
    EXPECT_EQ(toldNew, 0);
    view->setNeedsDisplay();
    EXPECT_EQ(toldNew, 1);
    EXPECT_EQ(requests, 1);

    const auto unheard = probe({0.0, 0.0, 10.0, 10.0});
    unheard->setNeedsDisplay();
    unheard->setRedisplayHandler([&] { ++toldNew; });
    unheard->setNeedsDisplay();
    EXPECT_EQ(toldNew, 2);
}

TEST_F(ViewRedisplay, WithoutAHandlerIsNotedAllTheSame)
{
    view->setRedisplayHandler(nullptr);
    displayed(*view);
    view->setNeedsDisplay();
    EXPECT_TRUE(view->needsDisplay());
    EXPECT_EQ(requests, 0);
}

TEST_F(ViewRedisplay, AHandlerMayReplaceItselfAndEndTheView)
{
    std::weak_ptr<View> weak = view;
    // What the handler holds has to live until it returns.
    const auto text = std::make_shared<std::string>("held");
    view->setRedisplayHandler([this, text] {
        view->setRedisplayHandler(nullptr);
        view.reset();
        *text += " to the end";
    });
    view->setNeedsDisplay();
    EXPECT_TRUE(weak.expired());
    EXPECT_EQ(*text, "held to the end");
}

TEST_F(ViewRedisplay, AHandlerMayPutAViewBackThatIsBeingRemoved)
{
    const auto held = probe({0.0, 0.0, 50.0, 50.0});
    view->addSubview(held);
    displayed(*view);
    view->setRedisplayHandler([&] { view->addSubview(held); });
    held->removeFromSuperview();
    EXPECT_EQ(held->superview(), view);
    EXPECT_EQ(view->subviews(), (std::vector<std::shared_ptr<View>>{held}));
}

TEST_F(ViewRedisplay, IsNotAnsweredByADocument)
{
    const auto renderer = std::make_shared<RecordingRenderer>();
    const RendererScope scope(renderer);
    view->setNeedsDisplay();
    static_cast<void>(view->dataWithPDFInsideRect(view->bounds()));
    EXPECT_EQ(view->asked.size(), 1U);
    EXPECT_TRUE(view->needsDisplay());
    view->setNeedsDisplay();
    EXPECT_EQ(requests, 1);
}

// Hierarchy.

using Views = std::vector<std::shared_ptr<View>>;

TEST(View, HoldsItsSubviewsFromBackToFront)
{
    const auto holder = probe({0.0, 0.0, 100.0, 80.0});
    const auto first = probe({});
    const auto second = probe({});
    holder->addSubview(first);
    holder->addSubview(second);
    EXPECT_EQ(holder->subviews(), (Views{first, second}));
    EXPECT_EQ(first->superview(), holder);
    EXPECT_EQ(holder->superview(), nullptr);
    holder->addSubview(first);
    EXPECT_EQ(holder->subviews(), (Views{second, first}));
    EXPECT_EQ(first->superview(), holder);
    second->removeFromSuperview();
    EXPECT_EQ(holder->subviews(), (Views{first}));
    EXPECT_EQ(second->superview(), nullptr);
}

TEST(View, ASubviewGoesToItsNewHolder)
{
    const auto first = probe({0.0, 0.0, 100.0, 80.0});
    const auto second = probe({0.0, 0.0, 100.0, 80.0});
    const auto held = probe({});
    first->addSubview(held);
    int requests = 0;
    displayed(*first);
    first->setRedisplayHandler([&] { ++requests; });
    second->addSubview(held);
    EXPECT_TRUE(first->subviews().empty());
    EXPECT_EQ(second->subviews(), (Views{held}));
    EXPECT_EQ(held->superview(), second);
    EXPECT_EQ(requests, 1);
}

std::string nameOfException(const std::function<void()>& action)
{
    try {
        action();
    } catch (const Exception& exception) {
        return exception.name();
    }
    return "none";
}

TEST(View, CannotHoldItselfOrItsHoldersOrNothing)
{
    const auto outer = probe({});
    const auto middle = probe({});
    const auto inner = probe({});
    outer->addSubview(middle);
    middle->addSubview(inner);
    EXPECT_EQ(nameOfException([&] { outer->addSubview(outer); }), "ViewCycle");
    EXPECT_EQ(nameOfException([&] { middle->addSubview(outer); }), "ViewCycle");
    EXPECT_EQ(nameOfException([&] { inner->addSubview(outer); }), "ViewCycle");
    EXPECT_EQ(nameOfException([&] { outer->addSubview(nullptr); }), "NullView");
    EXPECT_EQ(outer->subviews(), (Views{middle}));
    EXPECT_EQ(middle->subviews(), (Views{inner}));
    EXPECT_TRUE(inner->subviews().empty());
    EXPECT_EQ(outer->superview(), nullptr);
    // Upwards is no cycle.
    outer->addSubview(inner);
    EXPECT_EQ(outer->subviews(), (Views{middle, inner}));
}

TEST(View, ItsSubviewsEndWithIt)
{
    int ended = 0;
    auto holder = probe({});
    auto held = probe({});
    held->atEnd = [&] { ++ended; };
    holder->addSubview(held);
    held.reset();
    EXPECT_EQ(ended, 0);
    holder.reset();
    EXPECT_EQ(ended, 1);
}

TEST(View, ASubviewThatIsSharedOutlivesItsHolder)
{
    auto holder = probe({0.0, 0.0, 100.0, 80.0});
    const auto held = probe({0.0, 0.0, 10.0, 10.0});
    int requests = 0;
    holder->addSubview(held);
    displayed(*holder);
    holder.reset();
    EXPECT_EQ(held->superview(), nullptr);
    held->setRedisplayHandler([&] { ++requests; });
    held->setNeedsDisplay();
    EXPECT_EQ(requests, 1);
    held->removeFromSuperview();
    const auto other = probe({});
    other->addSubview(held);
    EXPECT_EQ(held->superview(), other);
}

TEST(View, ThatOnlyItsHolderKeepsEndsWhenItIsRemoved)
{
    const auto holder = probe({});
    auto held = probe({});
    const std::weak_ptr<View> weak = held;
    holder->addSubview(held);
    held.reset();
    holder->subviews().front()->removeFromSuperview();
    EXPECT_TRUE(weak.expired());
    EXPECT_TRUE(holder->subviews().empty());
}

// Responding and values by name.

TEST(View, AcceptsTheKeyboardAndEveryCommand)
{
    View view({});
    EXPECT_TRUE(view.becomeFirstResponder());
    EXPECT_TRUE(view.resignFirstResponder());
    EXPECT_TRUE(view.validateUserInterfaceItem({"copy"}));
    EXPECT_TRUE(view.validateUserInterfaceItem({""}));
}

TEST(View, HasNoValuesByName)
{
    View view({});
    EXPECT_EQ(nameOfException([&] { view.setValueForKey(std::int64_t{1}, "frame"); }), "UndefinedKey");
    EXPECT_EQ(nameOfException([&] { view.setValueForKey(1.5, ""); }), "UndefinedKey");
    EXPECT_EQ(nameOfException([&] { view.setValueForKey(std::monostate(), "frame"); }), "NilValue");
}

// Documents.

TEST(View, WithoutARendererItsDocumentsAreEmpty)
{
    const RendererScope scope(nullptr);
    const auto view = probe({0.0, 0.0, 100.0, 80.0});
    EXPECT_TRUE(view->dataWithPDFInsideRect(view->bounds()).empty());
    EXPECT_TRUE(view->dataWithEPSInsideRect(view->bounds()).empty());
    EXPECT_TRUE(view->dataInsideRect(view->bounds(), OutputKind::PNG).empty());
    EXPECT_TRUE(view->asked.empty());
}

TEST(View, ItsDocumentsAreOfTheKindAndSizeAskedFor)
{
    const auto renderer = std::make_shared<RecordingRenderer>();
    const RendererScope scope(renderer);
    const auto view = probe({5.0, 5.0, 100.0, 80.0});
    EXPECT_EQ(textOf(view->dataWithPDFInsideRect(view->bounds())), "document 1");
    EXPECT_EQ(textOf(view->dataWithEPSInsideRect({10.0, 20.0, 30.0, 40.0})), "document 2");
    EXPECT_EQ(textOf(view->dataInsideRect({10.0, 20.0, 3.0, 4.0}, OutputKind::TIFF)), "document 3");
    EXPECT_EQ(renderer->kinds(), (std::vector<OutputKind>{OutputKind::PDF, OutputKind::EPS, OutputKind::TIFF}));
    EXPECT_EQ(renderer->documents()[0].size, (Size{100.0, 80.0}));
    EXPECT_EQ(renderer->documents()[1].size, (Size{30.0, 40.0}));
    EXPECT_EQ(renderer->documents()[2].size, (Size{3.0, 4.0}));
    EXPECT_EQ(view->asked, (Rects{{0.0, 0.0, 100.0, 80.0}, {10.0, 20.0, 30.0, 40.0}, {10.0, 20.0, 3.0, 4.0}}));
}

TEST(View, ThePartOfADocumentLiesAtItsOrigin)
{
    struct Row {
        Growth growth;
        Point boundsOrigin;
        Rect part;
        Rect shape;
    };
    // The shape is at 10...14, 20...25 in the view's own coordinates; the part is 30 high.
    const Row rows[] = {
        // clang-format off
        {Growth::Upwards,   {0.0, 0.0},    {10.0, 20.0, 40.0, 30.0}, {0.0, 0.0, 4.0, 5.0}},
        {Growth::Upwards,   {0.0, 0.0},    {5.0, 0.0, 40.0, 30.0},   {5.0, 20.0, 4.0, 5.0}},
        {Growth::Upwards,   {-7.0, 8.0},   {5.0, 10.0, 40.0, 30.0},  {5.0, 10.0, 4.0, 5.0}},
        {Growth::Downwards, {0.0, 0.0},    {10.0, 20.0, 40.0, 30.0}, {0.0, 25.0, 4.0, 5.0}},
        {Growth::Downwards, {0.0, 0.0},    {5.0, 0.0, 40.0, 30.0},   {5.0, 5.0, 4.0, 5.0}},
        {Growth::Downwards, {-7.0, 8.0},   {5.0, 10.0, 40.0, 30.0},  {5.0, 15.0, 4.0, 5.0}},
        // clang-format on
    };
    for (const Row& row : rows) {
        const auto renderer = std::make_shared<RecordingRenderer>();
        const RendererScope scope(renderer);
        const auto view = probe({0.0, 0.0, 100.0, 80.0}, row.growth);
        view->setBoundsOrigin(row.boundsOrigin);
        view->drawing = [] { currentContext()->fillRect({10.0, 20.0, 4.0, 5.0}); };
        static_cast<void>(view->dataWithPDFInsideRect(row.part));
        const auto marks = placedMarks(renderer->documents().at(0).calls);
        ASSERT_EQ(marks.size(), 1U);
        EXPECT_EQ(marks[0].rect, row.shape) << toString(row.part);
        EXPECT_EQ(marks[0].clip, Rect({}, row.part.size)) << toString(row.part);
    }
}

TEST(View, APartWithoutAreaMakesNoDocument)
{
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const auto renderer = std::make_shared<RecordingRenderer>();
    const RendererScope scope(renderer);
    const auto view = probe({0.0, 0.0, 100.0, 80.0});
    for (const Rect& part : {Rect(), Rect(0.0, 0.0, 10.0, 0.0), Rect(0.0, 0.0, -1.0, 10.0), Rect(kNaN, 0.0, 10.0, 10.0), Rect(0.0, 0.0, kInfinity, 10.0)})
        EXPECT_TRUE(view->dataWithPDFInsideRect(part).empty()) << toString(part);
    EXPECT_TRUE(renderer->documents().empty());
}

} // namespace
} // namespace TOLVGraphing
