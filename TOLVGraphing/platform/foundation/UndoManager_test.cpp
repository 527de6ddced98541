#include "UndoManager.h"

#include "Exception.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace TOLVGraphing {
namespace {

/// A number whose changes can be taken back, as an editor registers them: the inverse registers its own inverse.
class Counter : public std::enable_shared_from_this<Counter> {
public:
    explicit Counter(UndoManager& manager) : m_manager(manager) {}

    void set(int value)
    {
        m_manager.registerUndoWithTarget(weak_from_this(), [this, former = m_value] { set(former); });
        m_value = value;
    }
    [[nodiscard]] int value() const { return m_value; }

private:
    UndoManager& m_manager;
    int m_value = 0;
};

class UndoManagerTest : public testing::Test {
protected:
    UndoManager manager;
    std::shared_ptr<Counter> counter = std::make_shared<Counter>(manager);
};

TEST_F(UndoManagerTest, EachRegistrationIsAStep)
{
    counter->set(1);
    counter->set(2);
    counter->set(3);
    for (const int expected : {2, 1, 0}) {
        EXPECT_TRUE(manager.canUndo());
        manager.undo();
        EXPECT_EQ(counter->value(), expected);
    }
    EXPECT_FALSE(manager.canUndo());
    for (const int expected : {1, 2, 3}) {
        EXPECT_TRUE(manager.canRedo());
        manager.redo();
        EXPECT_EQ(counter->value(), expected);
    }
    EXPECT_FALSE(manager.canRedo());
    manager.undo();
    EXPECT_EQ(counter->value(), 2);
}

TEST_F(UndoManagerTest, WithoutStepsNothingHappens)
{
    EXPECT_FALSE(manager.canUndo());
    EXPECT_FALSE(manager.canRedo());
    manager.undo();
    manager.redo();
    EXPECT_EQ(counter->value(), 0);
    EXPECT_FALSE(manager.isUndoing());
    EXPECT_FALSE(manager.isRedoing());
}

TEST_F(UndoManagerTest, AGroupIsOneStepTakenBackInReverse)
{
    std::string order;
    manager.beginUndoGrouping();
    manager.registerUndoWithTarget(counter, [&] { order += "a"; });
    manager.beginUndoGrouping();
    manager.registerUndoWithTarget(counter, [&] { order += "b"; });
    manager.endUndoGrouping();
    manager.registerUndoWithTarget(counter, [&] { order += "c"; });
    EXPECT_FALSE(manager.canUndo());
    manager.endUndoGrouping();
    manager.undo();
    EXPECT_EQ(order, "cba");
    EXPECT_FALSE(manager.canUndo());
}

TEST_F(UndoManagerTest, AGroupIsRedoneAsOneStep)
{
    manager.beginUndoGrouping();
    counter->set(1);
    counter->set(2);
    manager.endUndoGrouping();
    manager.undo();
    EXPECT_EQ(counter->value(), 0);
    manager.redo();
    EXPECT_EQ(counter->value(), 2);
    EXPECT_FALSE(manager.canRedo());
    manager.undo();
    EXPECT_EQ(counter->value(), 0);
}

TEST_F(UndoManagerTest, AnEmptyGroupLeavesNoStep)
{
    manager.beginUndoGrouping();
    manager.endUndoGrouping();
    EXPECT_FALSE(manager.canUndo());
}

TEST_F(UndoManagerTest, UnbalancedGroupsAreErrors)
{
    EXPECT_THROW(manager.endUndoGrouping(), Exception);
    manager.beginUndoGrouping();
    EXPECT_THROW(manager.undo(), Exception);
    EXPECT_THROW(manager.redo(), Exception);
    manager.endUndoGrouping();
    try {
        manager.endUndoGrouping();
        ADD_FAILURE();
    } catch (const Exception& exception) {
        EXPECT_EQ(exception.name(), "UndoGrouping");
    }
}

TEST_F(UndoManagerTest, AFreshRegistrationClearsWhatCouldBeRedone)
{
    counter->set(1);
    manager.undo();
    EXPECT_TRUE(manager.canRedo());
    counter->set(5);
    EXPECT_FALSE(manager.canRedo());
    manager.undo();
    EXPECT_EQ(counter->value(), 0);
}

TEST_F(UndoManagerTest, RedoingKeepsTheFurtherRedoSteps)
{
    counter->set(1);
    counter->set(2);
    manager.undo();
    manager.undo();
    manager.redo();
    EXPECT_TRUE(manager.canRedo());
    manager.redo();
    EXPECT_EQ(counter->value(), 2);
}

TEST_F(UndoManagerTest, SaysWhatItIsDoing)
{
    std::string phases;
    manager.registerUndoWithTarget(counter, [&] {
        phases += manager.isUndoing() && !manager.isRedoing() ? "undo" : "?";
        manager.registerUndoWithTarget(counter, [&] { phases += manager.isRedoing() && !manager.isUndoing() ? " redo" : "?"; });
    });
    manager.undo();
    manager.redo();
    EXPECT_EQ(phases, "undo redo");
    EXPECT_FALSE(manager.isUndoing());
    EXPECT_FALSE(manager.isRedoing());
}

TEST_F(UndoManagerTest, DoesNotKeepTheTarget)
{
    counter->set(1);
    const std::weak_ptr<Counter> observed = counter;
    counter.reset();
    EXPECT_TRUE(observed.expired());
    // The step is passed over.
    manager.undo();
    EXPECT_FALSE(manager.canRedo());
}

TEST_F(UndoManagerTest, PassesOverGoneTargetsInAGroup)
{
    auto other = std::make_shared<Counter>(manager);
    manager.beginUndoGrouping();
    counter->set(1);
    other->set(1);
    manager.endUndoGrouping();
    other.reset();
    manager.undo();
    EXPECT_EQ(counter->value(), 0);
}

TEST_F(UndoManagerTest, AStepWhoseTargetsAreAllGoneIsNone)
{
    counter->set(1);
    auto other = std::make_shared<Counter>(manager);
    other->set(1);
    EXPECT_TRUE(manager.canUndo());
    other.reset();
    manager.undo();
    EXPECT_EQ(counter->value(), 0) << "the step before it is taken back";
    EXPECT_FALSE(manager.canUndo());
    EXPECT_TRUE(manager.canRedo());
    counter.reset();
    EXPECT_FALSE(manager.canRedo());
    manager.redo();
    EXPECT_FALSE(manager.canUndo());
}

TEST_F(UndoManagerTest, KeepsWhatOperationsCapture)
{
    auto argument = std::make_shared<int>(7);
    const std::weak_ptr<int> observed = argument;
    int seen = 0;
    manager.registerUndoWithTarget(counter, [&seen, argument] { seen = *argument; });
    argument.reset();
    EXPECT_FALSE(observed.expired());
    manager.undo();
    EXPECT_EQ(seen, 7);
    EXPECT_TRUE(observed.expired());
}

TEST_F(UndoManagerTest, AnOperationThatThrowsLeavesAUsableManager)
{
    counter->set(1);
    manager.registerUndoWithTarget(counter, [this] {
        counter->set(9);
        throw std::runtime_error("no");
    });
    EXPECT_THROW(manager.undo(), std::runtime_error);
    EXPECT_FALSE(manager.isUndoing());
    EXPECT_EQ(counter->value(), 9);
    // What it registered before it failed can be done again; the step before it is still there.
    EXPECT_TRUE(manager.canRedo());
    manager.undo();
    EXPECT_EQ(counter->value(), 0);
}

TEST_F(UndoManagerTest, AGroupLeftOpenByAnOperationIsClosed)
{
    manager.registerUndoWithTarget(counter, [this] {
        manager.beginUndoGrouping();
        counter->set(3);
    });
    manager.undo();
    EXPECT_TRUE(manager.canRedo());
    manager.redo();
    EXPECT_EQ(counter->value(), 0);
}

TEST_F(UndoManagerTest, UndoingWhileUndoingIsAnError)
{
    std::string name;
    manager.registerUndoWithTarget(counter, [&] {
        try {
            manager.undo();
        } catch (const Exception& exception) {
            name = exception.name();
        }
    });
    counter->set(1);
    manager.undo();
    manager.undo();
    EXPECT_EQ(name, "UndoGrouping");
}

TEST_F(UndoManagerTest, KeepsTheLastLevels)
{
    manager.setLevelsOfUndo(2);
    for (int value = 1; value <= 5; ++value)
        counter->set(value);
    manager.undo();
    manager.undo();
    EXPECT_FALSE(manager.canUndo());
    EXPECT_EQ(counter->value(), 3);

    UndoManager late;
    const auto other = std::make_shared<Counter>(late);
    for (int value = 1; value <= 5; ++value)
        other->set(value);
    late.setLevelsOfUndo(1);
    late.undo();
    late.undo();
    EXPECT_EQ(other->value(), 4);
}

TEST_F(UndoManagerTest, RemovesAllActions)
{
    counter->set(1);
    counter->set(2);
    manager.undo();
    manager.removeAllActions();
    EXPECT_FALSE(manager.canUndo());
    EXPECT_FALSE(manager.canRedo());
}

} // namespace
} // namespace TOLVGraphing
