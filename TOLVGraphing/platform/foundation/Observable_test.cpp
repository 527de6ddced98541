#include "Observable.h"

#include "Exception.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace TOLVGraphing {
namespace {

/// A title, a list of marks, and a caption that follows the title.
class Document final : public Observable {
public:
    void setTitle(const std::string& title) { setProperty(m_title, title, "title"); }
    [[nodiscard]] const std::string& title() const { return m_title; }
    [[nodiscard]] std::vector<std::string> keysAffectingValueOfKey(std::string_view key) const override
    {
        return key == "caption" ? std::vector<std::string>{"title", "author"} : std::vector<std::string>{};
    }

private:
    std::string m_title;
};

const char* kindText(ChangeKind kind)
{
    switch (kind) {
    case ChangeKind::Setting: return "setting";
    case ChangeKind::Insertion: return "insertion";
    case ChangeKind::Removal: return "removal";
    case ChangeKind::Replacement: return "replacement";
    }
    return "";
}

/// Writes every notice down: "title setting", "marks insertion 2 5", "title setting initially".
struct Diary {
    std::vector<std::string> entries;

    Observable::Observer observer()
    {
        return [this](const PropertyChange& change) {
            std::string entry = change.key + " " + kindText(change.kind);
            for (const std::size_t index : change.indexes)
                entry += " " + std::to_string(index);
            entries.push_back(entry + (change.isInitial ? " initially" : ""));
        };
    }
};

using Entries = std::vector<std::string>;

TEST(Observable, AnnouncesAPropertyToItsObserversOnly)
{
    Document document;
    Diary titles;
    Diary authors;
    document.addObserver("title", titles.observer());
    document.addObserver("author", authors.observer());
    document.setTitle("a");
    EXPECT_EQ(titles.entries, Entries{"title setting"});
    EXPECT_EQ(authors.entries, Entries{});
}

TEST(Observable, AnnouncesAnEqualValueToo)
{
    Document document;
    Diary diary;
    document.addObserver("title", diary.observer());
    document.setTitle("a");
    document.setTitle("a");
    EXPECT_EQ(diary.entries, (Entries{"title setting", "title setting"}));
}

TEST(Observable, TellsAfterTheChange)
{
    Document document;
    std::string seen;
    document.addObserver("title", [&](const PropertyChange&) { seen = document.title(); });
    document.setTitle("new");
    EXPECT_EQ(seen, "new");
}

TEST(Observable, DeliversInitiallyBeforeSubscribingReturns)
{
    Document document;
    Diary diary;
    document.addObserver("title", diary.observer(), InitialDelivery::Yes);
    EXPECT_EQ(diary.entries, Entries{"title setting initially"});
    document.setTitle("a");
    EXPECT_EQ(diary.entries, (Entries{"title setting initially", "title setting"}));
}

TEST(Observable, ABeginningWithoutAnEndAnnouncesNothingAndLeavesLaterPairsAlone)
{
    Document document;
    Diary diary;
    document.addObserver("title", diary.observer());
    document.willChangeValueForKey("title");
    EXPECT_EQ(diary.entries, Entries{});
    document.setTitle("a");
    document.setTitle("b");
    EXPECT_EQ(diary.entries, (Entries{"title setting", "title setting"}));
}

TEST(Observable, AnEndWithoutABeginningAnnouncesNothing)
{
    Document document;
    Diary diary;
    document.addObserver("title", diary.observer());
    document.didChangeValueForKey("title");
    document.willChangeValueForKey("author");
    document.didChangeValueForKey("title");
    EXPECT_EQ(diary.entries, Entries{});
}

TEST(Observable, NestedPairsEachAnnounce)
{
    Document document;
    Diary diary;
    document.addObserver("title", diary.observer());
    {
        const PropertyChangeScope outer(document, "title");
        document.setTitle("a");
        EXPECT_EQ(diary.entries.size(), 1U);
    }
    EXPECT_EQ(diary.entries, (Entries{"title setting", "title setting"}));
}

TEST(Observable, ListChangesComeOnceWithAllTheirIndexes)
{
    Document document;
    Diary diary;
    document.addObserver("marks", diary.observer());
    const struct {
        ChangeKind kind;
        IndexSet indexes;
    } changes[] = {{ChangeKind::Insertion, {2, 5, 3}}, {ChangeKind::Removal, {0}}, {ChangeKind::Replacement, {1, 4}}};
    for (const auto& change : changes) {
        document.willChange(change.kind, change.indexes, "marks");
        document.didChange(change.kind, change.indexes, "marks");
    }
    EXPECT_EQ(diary.entries, (Entries{"marks insertion 2 3 5", "marks removal 0", "marks replacement 1 4"}));
}

TEST(Observable, DependentPropertiesAreAnnouncedAsSet)
{
    Document document;
    Diary diary;
    document.addObserver("caption", diary.observer());
    document.setTitle("a");
    document.willChange(ChangeKind::Insertion, {1}, "author");
    document.didChange(ChangeKind::Insertion, {1}, "author");
    document.willChangeValueForKey("marks");
    document.didChangeValueForKey("marks");
    EXPECT_EQ(diary.entries, (Entries{"caption setting", "caption setting"}));
}

TEST(Observable, RemovedObserversAreNotTold)
{
    Document document;
    Diary first;
    Diary second;
    const ObserverToken token = document.addObserver("title", first.observer());
    document.addObserver("title", second.observer());
    document.removeObserver(token);
    document.setTitle("a");
    EXPECT_EQ(first.entries, Entries{});
    EXPECT_EQ(second.entries, Entries{"title setting"});
}

TEST(Observable, RemovingTwiceIsAnError)
{
    Document document;
    Document other;
    const ObserverToken token = document.addObserver("title", [](const PropertyChange&) {});
    EXPECT_NE(token, 0U);
    document.removeObserver(token);
    for (const ObserverToken unknown : {token, ObserverToken{0}, ObserverToken{999}}) {
        try {
            document.removeObserver(unknown);
            ADD_FAILURE() << "removed " << unknown;
        } catch (const Exception& exception) {
            EXPECT_STREQ(exception.what(), "UnknownObserver: Cannot remove an observer that is not registered");
        }
    }
}

TEST(Observable, AnObserverMayRemoveItselfWhileItIsTold)
{
    Document document;
    int calls = 0;
    ObserverToken token = 0;
    // The text is captured, so that the observer still reads from itself after it has unsubscribed.
    token = document.addObserver("title", [&, kept = std::string(100, 'x')](const PropertyChange&) {
        document.removeObserver(token);
        calls += kept == std::string(100, 'x') ? 1 : 100;
    });
    document.setTitle("a");
    document.setTitle("b");
    EXPECT_EQ(calls, 1);
}

TEST(Observable, AnObserverRemovedByAnotherIsNotToldAnyMore)
{
    Document document;
    int told = 0;
    ObserverToken tokens[2] = {};
    for (int i = 0; i < 2; ++i) {
        tokens[i] = document.addObserver("title", [&, i](const PropertyChange&) {
            ++told;
            document.removeObserver(tokens[1 - i]);
        });
    }
    // Whoever comes first removes the other.
    document.setTitle("a");
    EXPECT_EQ(told, 1);
}

TEST(Observable, AnObserverAddedWhileOthersAreToldHearsTheNextChange)
{
    Document document;
    Diary later;
    bool added = false;
    document.addObserver("title", [&](const PropertyChange&) {
        if (!added)
            document.addObserver("title", later.observer());
        added = true;
    });
    document.setTitle("a");
    EXPECT_EQ(later.entries, Entries{});
    document.setTitle("b");
    EXPECT_EQ(later.entries, Entries{"title setting"});
}

TEST(Observable, AnObserverMayEndTheObject)
{
    auto document = std::make_unique<Document>();
    Document* observed = document.get();
    int calls = 0;
    for (int i = 0; i < 3; ++i) {
        observed->addObserver("title", [&](const PropertyChange&) {
            ++calls;
            document.reset();
        });
    }
    observed->willChangeValueForKey("title");
    observed->didChangeValueForKey("title");
    EXPECT_EQ(calls, 1);
    EXPECT_FALSE(document);
}

TEST(Observable, CopiesHaveNoObservers)
{
    Document document;
    Diary diary;
    document.addObserver("title", diary.observer());
    Document copy(document);
    copy.setTitle("a");
    EXPECT_EQ(diary.entries, Entries{});
    Document assigned;
    assigned.addObserver("title", diary.observer());
    assigned = document;
    assigned.setTitle("b");
    EXPECT_EQ(diary.entries, Entries{"title setting"});
}

TEST(Observable, WhatAnObserverThrowsLeavesTheScopeOfAChange)
{
    Observable object;
    object.addObserver("key", [](const PropertyChange&) { throw std::runtime_error("from the observer"); });
    const auto change = [&] { const PropertyChangeScope scope(object, "key"); };
    EXPECT_THROW(change(), std::runtime_error);
    // Another exception that is on its way through the scope goes on.
    const auto failingChange = [&] {
        const PropertyChangeScope scope(object, "key");
        throw std::logic_error("from the change");
    };
    EXPECT_THROW(failingChange(), std::logic_error);
}

} // namespace
} // namespace TOLVGraphing
