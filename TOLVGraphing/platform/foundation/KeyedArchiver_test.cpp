#include "KeyedArchiver.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

namespace TOLVGraphing {
namespace {

/// A leaf with a value of each scalar kind.
class Leaf : public Codable {
public:
    double number = 0.0;
    std::int64_t whole = 0;
    bool flag = false;
    std::string text;

    [[nodiscard]] std::string archiveClassName() const override { return "TestLeaf"; }
    void encodeWithCoder(KeyedArchiver& coder) const override
    {
        coder.encodeDouble(number, "number");
        coder.encodeInteger(whole, "whole");
        coder.encodeBool(flag, "flag");
        coder.encodeString(text, "text");
    }
    static std::shared_ptr<Leaf> initWithCoder(KeyedUnarchiver& coder)
    {
        auto leaf = std::make_shared<Leaf>();
        leaf->number = coder.decodeDouble("number").value_or(-1.0);
        leaf->whole = coder.decodeInteger("whole").value_or(-1);
        leaf->flag = coder.decodeBool("flag").value_or(false);
        leaf->text = coder.decodeString("text").value_or("absent");
        // A leaf that says so makes no object.
        return leaf->text == "unmakeable" ? nullptr : leaf;
    }
};

/// A leaf of a class that no reader knows.
class NewerLeaf final : public Leaf {
public:
    [[nodiscard]] std::string archiveClassName() const override { return "TestNewerLeaf"; }
    [[nodiscard]] std::vector<std::string> archiveBaseClassNames() const override { return {"TestBetweenLeaf", "TestLeaf"}; }
};

/// An object with two children and a list.
class Branch final : public Codable {
public:
    std::shared_ptr<Codable> left;
    std::shared_ptr<Codable> right;
    std::vector<std::shared_ptr<const Codable>> list;

    [[nodiscard]] std::string archiveClassName() const override { return "TestBranch"; }
    void encodeWithCoder(KeyedArchiver& coder) const override
    {
        coder.encodeObject(left.get(), "left");
        coder.encodeObject(right.get(), "right");
        coder.encodeObjects(list, "list");
    }
    static std::shared_ptr<Branch> initWithCoder(KeyedUnarchiver& coder)
    {
        auto branch = std::make_shared<Branch>();
        branch->left = coder.decodeObject<Codable>("left", "an object");
        branch->right = coder.decodeObject<Codable>("right", "an object");
        for (const auto& element : coder.decodeObjects<Leaf>("list", "leaves").value_or(std::vector<std::shared_ptr<Leaf>>()))
            branch->list.push_back(element);
        return branch;
    }
};

const ArchiveClassRegistration registerLeaf("TestLeaf", Leaf::initWithCoder);
const ArchiveClassRegistration registerBranch("TestBranch", Branch::initWithCoder);

template <typename Type>
std::shared_ptr<Type> roundTrip(const Codable& root)
{
    return std::dynamic_pointer_cast<Type>(KeyedUnarchiver::unarchivedObject(KeyedArchiver::archivedObject(root)));
}

std::shared_ptr<ArchiveObject> leafObject(std::vector<std::pair<std::string, ArchiveValue>> values)
{
    auto object = std::make_shared<ArchiveObject>();
    object->className = "TestLeaf";
    object->values = std::move(values);
    return object;
}

std::string errorOfReading(const std::shared_ptr<ArchiveObject>& object)
{
    try {
        const auto unexpected = KeyedUnarchiver::unarchivedObject(object);
        return "read";
    } catch (const ArchiveError& error) {
        return error.what();
    }
}

TEST(KeyedArchiver, StoresValuesInTheOrderOfEncoding)
{
    Leaf leaf;
    leaf.number = -0.0;
    leaf.whole = std::numeric_limits<std::int64_t>::min();
    leaf.flag = true;
    leaf.text = "é";
    const auto object = KeyedArchiver::archivedObject(leaf);
    EXPECT_EQ(object->className, "TestLeaf");
    EXPECT_TRUE(object->baseClassNames.empty());
    ASSERT_EQ(object->values.size(), 4U);
    EXPECT_EQ(object->values[0].first, "number");
    EXPECT_TRUE(std::signbit(std::get<double>(object->values[0].second)));
    EXPECT_EQ(object->values[1], (std::pair<std::string, ArchiveValue>{"whole", std::numeric_limits<std::int64_t>::min()}));
    EXPECT_EQ(object->values[2], (std::pair<std::string, ArchiveValue>{"flag", true}));
    EXPECT_EQ(object->values[3], (std::pair<std::string, ArchiveValue>{"text", std::string("é")}));
    EXPECT_EQ(KeyedArchiver::archivedObject(NewerLeaf())->baseClassNames, (std::vector<std::string>{"TestBetweenLeaf", "TestLeaf"}));
}

TEST(KeyedArchiver, RestoresScalarsToTheLastBit)
{
    for (const double number : {0.1, -0.0, 5e-324, 1e300, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
        Leaf leaf;
        leaf.number = number;
        leaf.whole = std::numeric_limits<std::int64_t>::max();
        const auto read = roundTrip<Leaf>(leaf);
        ASSERT_TRUE(read);
        EXPECT_EQ(std::memcmp(&read->number, &number, sizeof number), 0) << number;
        EXPECT_EQ(read->whole, std::numeric_limits<std::int64_t>::max());
        EXPECT_FALSE(read->flag);
        EXPECT_EQ(read->text, "");
    }
}

TEST(KeyedArchiver, StoresAnObjectOnceHoweverOftenItIsReached)
{
    Branch branch;
    const auto shared = std::make_shared<Leaf>();
    branch.left = shared;
    branch.right = shared;
    branch.list = {shared, std::make_shared<Leaf>(), nullptr, shared};
    const auto object = KeyedArchiver::archivedObject(branch);
    EXPECT_EQ(*object->find("left"), *object->find("right"));
    const auto read = roundTrip<Branch>(branch);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->left, read->right);
    // The null element is left out.
    ASSERT_EQ(read->list.size(), 3U);
    EXPECT_EQ(read->list[0], read->left);
    EXPECT_NE(read->list[1], read->left);
    EXPECT_EQ(read->list[2], read->left);
}

TEST(KeyedArchiver, NullReadsBackAsAbsent)
{
    const auto object = KeyedArchiver::archivedObject(Branch());
    EXPECT_EQ(*object->find("left"), ArchiveValue());
    const auto read = roundTrip<Branch>(Branch());
    ASSERT_TRUE(read);
    EXPECT_FALSE(read->left);
    EXPECT_EQ(KeyedUnarchiver::unarchivedObject(nullptr), nullptr);
}

TEST(KeyedArchiver, AnObjectThatContainsItselfIsAnError)
{
    const auto branch = std::make_shared<Branch>();
    branch->left = branch;
    EXPECT_THROW((void)KeyedArchiver::archivedObject(*branch), ArchiveError);
    branch->left.reset();
}

TEST(KeyedArchiver, EncodingAKeyTwiceKeepsTheLastValue)
{
    class Twice final : public Codable {
    public:
        [[nodiscard]] std::string archiveClassName() const override { return "TestTwice"; }
        void encodeWithCoder(KeyedArchiver& coder) const override
        {
            coder.encodeDouble(1.0, "a");
            coder.encodeDouble(2.0, "b");
            coder.encodeString("three", "a");
        }
    };
    const auto object = KeyedArchiver::archivedObject(Twice());
    ASSERT_EQ(object->values.size(), 2U);
    EXPECT_EQ(object->values[0], (std::pair<std::string, ArchiveValue>{"a", std::string("three")}));
}

TEST(KeyedUnarchiver, AbsentKeysAnswerNothing)
{
    const auto read = std::dynamic_pointer_cast<Leaf>(KeyedUnarchiver::unarchivedObject(leafObject({{"text", std::monostate()}})));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->number, -1.0);
    EXPECT_EQ(read->whole, -1);
    EXPECT_EQ(read->text, "absent");
}

TEST(KeyedUnarchiver, ObjectsAndListsThatAreNullAreNothing)
{
    auto branch = std::make_shared<ArchiveObject>();
    branch->className = "TestBranch";
    branch->values = {{"left", std::shared_ptr<ArchiveObject>()}, {"list", std::shared_ptr<ArchiveArray>()}};
    const auto read = std::dynamic_pointer_cast<Branch>(KeyedUnarchiver::unarchivedObject(branch));
    ASSERT_TRUE(read);
    EXPECT_FALSE(read->left);
    EXPECT_TRUE(read->list.empty());
    auto list = std::make_shared<ArchiveArray>();
    list->elements = {leafObject({}), std::shared_ptr<ArchiveObject>()};
    branch->values = {{"list", list}};
    EXPECT_EQ(errorOfReading(branch), "TestBranch \"list\": found nothing, expected a list of leaves");
}

TEST(KeyedUnarchiver, NumbersStandInForEachOtherWhereTheyAreExact)
{
    const struct {
        ArchiveValue value;
        double number;
        std::int64_t whole;
    } cases[] = {{std::int64_t{-3}, -3.0, -3}, {4.0, 4.0, 4}, {true, 1.0, 1}, {false, 0.0, 0}};
    for (const auto& one : cases) {
        const auto read = std::dynamic_pointer_cast<Leaf>(KeyedUnarchiver::unarchivedObject(leafObject({{"number", one.value}, {"whole", one.value}})));
        ASSERT_TRUE(read);
        EXPECT_EQ(read->number, one.number);
        EXPECT_EQ(read->whole, one.whole);
    }
    for (const std::int64_t flag : {0, 1, 7})
        EXPECT_EQ(std::dynamic_pointer_cast<Leaf>(KeyedUnarchiver::unarchivedObject(leafObject({{"flag", flag}})))->flag, flag != 0);
}

TEST(KeyedUnarchiver, ValuesOfTheWrongKindAreErrors)
{
    const auto list = std::make_shared<ArchiveArray>();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const struct {
        const char* key;
        ArchiveValue value;
        const char* expected;
    } cases[] = {
        {"number", std::string("1"), "TestLeaf \"number\": found a text, expected a number"},
        {"number", list, "TestLeaf \"number\": found a list, expected a number"},
        {"whole", 1.5, "TestLeaf \"whole\": found a number, expected a whole number"},
        {"whole", 1e19, "TestLeaf \"whole\": found a number, expected a whole number"},
        {"whole", nan, "TestLeaf \"whole\": found a number, expected a whole number"},
        {"flag", 1.0, "TestLeaf \"flag\": found a number, expected a boolean"},
        {"text", true, "TestLeaf \"text\": found a boolean, expected a text"},
        {"text", leafObject({}), "TestLeaf \"text\": found an object of class TestLeaf, expected a text"},
    };
    for (const auto& one : cases)
        EXPECT_EQ(errorOfReading(leafObject({{one.key, one.value}})), one.expected);
}

TEST(KeyedUnarchiver, ObjectsOfTheWrongClassAreErrors)
{
    auto branch = std::make_shared<ArchiveObject>();
    branch->className = "TestBranch";
    branch->values = {{"left", 1.0}};
    EXPECT_EQ(errorOfReading(branch), "TestBranch \"left\": found a number, expected an object");
    branch->values = {{"list", 1.0}};
    EXPECT_EQ(errorOfReading(branch), "TestBranch \"list\": found a number, expected a list of leaves");
    auto list = std::make_shared<ArchiveArray>();
    list->elements = {std::string("x")};
    branch->values = {{"list", list}};
    EXPECT_EQ(errorOfReading(branch), "TestBranch \"list\": found a text, expected a list of leaves");
    auto inner = std::make_shared<ArchiveObject>();
    inner->className = "TestBranch";
    list->elements = {inner};
    EXPECT_EQ(errorOfReading(branch), "TestBranch \"list\": found an object of class TestBranch, expected leaves");
}

TEST(KeyedUnarchiver, ElementsThatMakeNoObjectAreLeftOut)
{
    auto branch = std::make_shared<ArchiveObject>();
    branch->className = "TestBranch";
    auto list = std::make_shared<ArchiveArray>();
    list->elements = {leafObject({}), leafObject({{"text", std::string("unmakeable")}}), leafObject({})};
    branch->values = {{"list", list}, {"left", leafObject({{"text", std::string("unmakeable")}})}};
    const auto read = std::dynamic_pointer_cast<Branch>(KeyedUnarchiver::unarchivedObject(branch));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->list.size(), 2U);
    EXPECT_FALSE(read->left);
}

TEST(KeyedUnarchiver, AnUnknownClassIsReadAsItsNearestKnownBase)
{
    NewerLeaf leaf;
    leaf.number = 2.5;
    const auto read = roundTrip<Leaf>(leaf);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->number, 2.5);
    EXPECT_EQ(read->archiveClassName(), "TestLeaf");
    auto unknown = std::make_shared<ArchiveObject>();
    unknown->className = "TestUnheardOf";
    unknown->baseClassNames = {"TestNeitherThis"};
    EXPECT_EQ(errorOfReading(unknown), "found an object of the unknown class TestUnheardOf, expected a class that can be read");
}

TEST(KeyedUnarchiver, CirclesAndGreatDepthAreErrors)
{
    auto circle = std::make_shared<ArchiveObject>();
    circle->className = "TestBranch";
    circle->values = {{"left", circle}};
    EXPECT_EQ(errorOfReading(circle), "an object of class TestBranch contains itself");
    circle->values.clear();

    auto deep = leafObject({});
    for (int i = 0; i < 255; ++i) {
        auto outer = std::make_shared<ArchiveObject>();
        outer->className = "TestBranch";
        outer->values = {{"left", deep}};
        deep = outer;
    }
    EXPECT_EQ(errorOfReading(deep), "read");
    auto deeper = std::make_shared<ArchiveObject>();
    deeper->className = "TestBranch";
    deeper->values = {{"left", deep}};
    EXPECT_EQ(errorOfReading(deeper), "objects are nested deeper than 256 levels at an object of class TestLeaf");
}

TEST(KeyedUnarchiver, TheLastRegistrationOfANameHolds)
{
    KeyedUnarchiver::registerClass("TestReplaced", [](KeyedUnarchiver&) { return std::shared_ptr<Codable>(); });
    KeyedUnarchiver::registerClass("TestReplaced", Leaf::initWithCoder);
    auto object = std::make_shared<ArchiveObject>();
    object->className = "TestReplaced";
    EXPECT_TRUE(KeyedUnarchiver::unarchivedObject(object));
}

} // namespace
} // namespace TOLVGraphing
