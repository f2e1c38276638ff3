#include "platform/foundation/Array.h"
#include "platform/foundation/Dictionary.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace exifcard {
namespace {

constexpr auto kMost = std::numeric_limits<std::int64_t>::max();
constexpr auto kLeast = std::numeric_limits<std::int64_t>::min();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(ValueTest, ReadsNumbersAndTextsAsThePlatformDoes) {
    struct Case {
        Value value;
        std::int64_t integer;
        double real;
        bool boolean;
    };
    const Case cases[] = {
        {Value(), 0, 0, false},
        {true, 1, 1, true},
        {4.25, 4, 4.25, true},
        {-0.5, 0, -0.5, true},
        {2.5F, 2, 2.5, true},
        {kInfinity, kMost, kInfinity, true},
        {-1e300, kLeast, -1e300, true},
        {"12abc", 12, 12, true},
        {" 3.5", 3, 3.5, true},
        {"-7", -7, -7, true},
        {"1e3", 1, 1000, true},
        {"0x10", 0, 0, false},
        {"+48.8583", 48, 48.8583, true},
        {"99999999999999999999", kMost, 1e20, true},
        {"", 0, 0, false},
        {"abc", 0, 0, false},
        {"YES", 0, 0, true},
        {" +00t", 0, 0, true},
        {"no 1", 0, 0, false},
        {Date{5}, 0, 0, false},
        {Array::make({7}), 0, 0, false},
        {Dictionary::make({{"a", 7}}), 0, 0, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.value.description());
        EXPECT_EQ(c.value.integerValue(), c.integer);
        EXPECT_EQ(c.value.doubleValue(), c.real);
        EXPECT_EQ(c.value.floatValue(), static_cast<float>(c.real));
        EXPECT_EQ(c.value.boolValue(), c.boolean);
    }
    EXPECT_TRUE(std::isnan(Value(std::nan("")).doubleValue()));
    EXPECT_EQ(Value(std::nan("")).integerValue(), 0);
    EXPECT_EQ(Value(kMost).intValue(), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(Value("-3000000000").intValue(), std::numeric_limits<std::int32_t>::min());
}

TEST(ValueTest, EqualsWhatIsOfTheSameKindAndContents) {
    struct Case {
        Value one;
        Value other;
        bool isEqual;
    };
    const Case cases[] = {
        {Value(), Value(), true},
        {Value(), 0, false},
        {1, true, false},
        {1.0, 1.0F, false},
        {"a", "a", true},
        {Array::make({1, "a"}), Array::make({1, "a"}), true},
        {Array::make({1, "a"}), Array::make({1}), false},
        {Array::make({Array::make({1})}), Array::make({Array::make({2})}), false},
        {Dictionary::make({{"a", Array::make()}}), Dictionary::make({{"a", Array::make()}}), true},
        {Dictionary::make({{"a", 1}}), Dictionary::make({{"b", 1}}), false},
        {Dictionary::make({{"a", 1}}), Dictionary::make({{"a", 1}, {"b", 1}}), false},
        {ArrayPtr(), Value(), true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.one.description() + " and " + c.other.description());
        EXPECT_EQ(c.one == c.other, c.isEqual);
        EXPECT_EQ(c.other == c.one, c.isEqual);
    }
}

TEST(ValueTest, ComparesContainersInsideOneAnotherToAnEnd) {
    const auto holdingItself = [] {
        auto array = Array::make();
        array->addObject(array);
        return array;
    };
    const auto one = holdingItself();
    const auto other = holdingItself();
    EXPECT_TRUE(Value(one) == Value(one));
    EXPECT_FALSE(Value(one) == Value(other));
    *one = Array(); // Breaks the circles.
    *other = Array();

    const auto doubled = [](int levels) {
        auto array = Array::make();
        for (int level = 0; level < levels; ++level) {
            array = Array::make({array, array});
        }
        return array;
    };
    EXPECT_TRUE(Value(doubled(10)) == Value(doubled(10)));
    EXPECT_FALSE(Value(doubled(100)) == Value(doubled(100))); // Too much to compare.
}

TEST(ValueTest, ACopyIsANewContainerOverTheSameElements) {
    const auto inner = Array::make({1});
    const auto outer = Dictionary::make({{"inner", inner}});
    const Value shallow = Value(outer).copied();
    outer->removeObjectForKey("inner");
    EXPECT_EQ(shallow.dictionary()->objectForKey("inner").array(), inner);
    const auto deeper = shallow.dictionary()->copyWithItemsCopied();
    inner->addObject(2);
    EXPECT_EQ(deeper->objectForKey("inner"), Value(Array::make({1})));
    EXPECT_TRUE(Value().copied().isNothing());
}

} // namespace
} // namespace exifcard
