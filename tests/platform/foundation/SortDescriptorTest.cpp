#include "platform/foundation/SortDescriptor.h"

#include "platform/foundation/Dictionary.h"

#include <gtest/gtest.h>

#include <limits>

namespace exifcard {
namespace {

using Positions = std::vector<std::size_t>;

std::vector<KeyValueLookup> photos(std::initializer_list<DictionaryPtr> dictionaries) {
    std::vector<KeyValueLookup> lookups;
    for (const auto& dictionary : dictionaries) {
        lookups.push_back(keyValueLookupOf(dictionary));
    }
    return lookups;
}

TEST(SortDescriptorTest, LaterDescriptorsBreakTiesAndTheRestKeepsItsOrder) {
    const auto list =
        photos({Dictionary::make({{"a", 2}, {"b", "x"}}), Dictionary::make({{"a", 1}, {"b", "y"}}),
            Dictionary::make({{"a", 1.0}, {"b", "x"}}), Dictionary::make({{"a", 2}, {"b", "x"}})});
    EXPECT_EQ(sortedPositions(list, {{"a", true}, {"b", true}}), (Positions{2, 1, 0, 3}));
    EXPECT_EQ(sortedPositions(list, {{"a", false}, {"b", true}}), (Positions{0, 3, 2, 1}));
    EXPECT_EQ(sortedPositions(list, {{"a", false}, {"b", false}}), (Positions{0, 3, 1, 2}));
    EXPECT_EQ(sortedPositions(list, {}), (Positions{0, 1, 2, 3}));
}

TEST(SortDescriptorTest, NothingIsSmallerThanAnyValue) {
    const auto list = photos({Dictionary::make({{"date", Date{-5}}}), Dictionary::make(),
        Dictionary::make({{"date", Date{7}}}), Dictionary::make()});
    EXPECT_EQ(sortedPositions(list, {{"date", true}}), (Positions{1, 3, 0, 2}));
    EXPECT_EQ(sortedPositions(list, {{"date", false}}), (Positions{2, 0, 1, 3}));
}

TEST(SortDescriptorTest, OrdersValuesThatCannotBeCompared) {
    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    const auto list = photos({Dictionary::make({{"a", "text"}}), Dictionary::make({{"a", 3}}),
        Dictionary::make({{"a", notANumber}}), Dictionary::make({{"a", -1}}),
        Dictionary::make({{"a", notANumber}})});
    EXPECT_EQ(sortedPositions(list, {{"a", true}}), (Positions{2, 4, 3, 1, 0}));
}

} // namespace
} // namespace exifcard
