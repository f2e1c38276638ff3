#include "platform/foundation/Predicate.h"

#include "platform/foundation/Array.h"
#include "platform/foundation/Dictionary.h"

#include <gtest/gtest.h>

#include <limits>
#include <span>

namespace exifcard {
namespace {

/// 2020-01-02 03:04:05.5 UTC.
constexpr Date kCreated{1577934245.5};

KeyValueLookup photo() {
    return keyValueLookupOf(Dictionary::make({
        {"title", "Élan vital"},
        {"file", "IMG_0001.HEIC"},
        {"mediaType", 1},
        {"duration", 0.0},
        {"favorite", true},
        {"creationDate", kCreated},
        {"tags", Array::make({"sea", "sun", 7})},
        {"camera", Dictionary::make({{"make", "Nikon"}})},
        {"in", "a key like a keyword"},
        {"größe", 3.5},
        {"wrong", std::numeric_limits<double>::quiet_NaN()},
    }));
}

struct Question {
    const char* format;
    bool answer;
};

void expectAnswers(std::span<const Question> questions) {
    for (const auto& [format, answer] : questions) {
        SCOPED_TRACE(format);
        EXPECT_EQ(Predicate::predicateWithFormat(format)->evaluateWithObject(photo()), answer);
    }
}

TEST(PredicateTest, ComparesNumbersTextsAndDates) {
    constexpr Question kQuestions[] = {
        {"favorite = YES", true},
        {"favorite == 1", true},
        {"favorite = NO", false},
        {"mediaType == 1.0", true},
        {"mediaType=1", true},
        {"1 < größe", true},
        {"größe >= 3.5", true},
        {"größe => 3.6", false},
        {"größe <> 3.5", false},
        {"größe =< .35e1 ", true},
        {"duration > -1", true},
        {"9007199254740993 > 9007199254740992", true},
        {"title = 'Élan vital'", true},
        {"title = \"élan vital\"", false},
        {"title = 'Elan vital'", false},
        {"title =[cd] 'elan VITAL'", true},
        {"file < 'IMG_0002'", true},
        {"file < 'img'", true},
        {"mediaType = '1'", false},
        {"creationDate = CAST(599627045.5, 'NSDate')", true},
        {"creationDate > CAST(599627045.5, 'NSDate')", false},
        {"creationDate < 599627045", false},
        {"größe BETWEEN {3.5, 4}", true},
        {"größe BETWEEN {3.6, 4}", false},
        {"größe BETWEEN {4, 3}", false},
        {"wrong = wrong", false},
        {"wrong != wrong", true},
        {"camera.make = 'Nikon'", true},
        {"SELF.camera.make = 'Nikon'", true},
        {"camera.model.name = NULL", true},
        {"#in = 'a key like a keyword'", true},
    };
    expectAnswers(kQuestions);
}

TEST(PredicateTest, NothingEqualsOnlyItselfAndStandsInNoOrder) {
    constexpr Question kQuestions[] = {
        {"location = NULL", true},
        {"location == nil", true},
        {"location != NULL", false},
        {"title != NULL", true},
        {"location != 5", true},
        {"location < 5", false},
        {"location >= 5", false},
        {"location <= NULL", false},
        {"NOT (location < 5)", true},
        {"location CONTAINS 'a'", false},
        {"location BETWEEN {0, 9}", false},
        {"location IN {1, 2}", false},
        {"Title = NULL", true},
    };
    expectAnswers(kQuestions);
}

TEST(PredicateTest, SearchesTextsAndLists) {
    constexpr Question kQuestions[] = {
        {"title CONTAINS 'vit'", true},
        {"title CONTAINS 'VIT'", false},
        {"title contains[c] 'VIT'", true},
        {"title CONTAINS[d] 'Elan'", true},
        {"title BEGINSWITH 'É'", true},
        {"title BEGINSWITH[c] 'é'", true},
        {"file ENDSWITH '.HEIC'", true},
        {"file ENDSWITH '.heic'", false},
        {"mediaType CONTAINS '1'", false},
        {"tags CONTAINS 'sun'", true},
        {"tags CONTAINS 'su'", false},
        {"tags CONTAINS 7.0", true},
        {"mediaType IN {1, 2}", true},
        {"mediaType IN {}", false},
        {"'sea' IN tags", true},
        {"'SEA' IN[c] tags", true},
        {"'IMG' IN file", true},
        {"file LIKE 'IMG_????.*'", true},
        {"file LIKE 'IMG_???.*'", false},
        {"file LIKE[c] '*.heic'", true},
        {"file LIKE '*0*0*1*'", true},
        {"file LIKE '*H'", false},
        {"title LIKE '?lan*'", true},
        {"title LIKE '??lan*'", false},
        {"'a*b' LIKE 'a\\\\*b'", true},
        {"'axb' LIKE 'a\\\\*b'", false},
        {"file MATCHES 'IMG_\\\\d+\\\\.\\\\w+'", true},
        {"file MATCHES 'IMG'", false},
        {"file MATCHES[c] 'img.*'", true},
        {"title MATCHES[cd] 'ELAN\\\\W+vital'", true},
    };
    expectAnswers(kQuestions);
}

TEST(PredicateTest, NotBindsTighterThanAndTighterThanOr) {
    constexpr Question kQuestions[] = {
        {"TRUEPREDICATE OR FALSEPREDICATE AND FALSEPREDICATE", true},
        {"(TRUEPREDICATE OR FALSEPREDICATE) AND FALSEPREDICATE", false},
        {"NOT FALSEPREDICATE AND FALSEPREDICATE", false},
        {"NOT (FALSEPREDICATE AND FALSEPREDICATE)", true},
        {"!FALSEPREDICATE && not not TRUEPREDICATE", true},
        {"FALSEPREDICATE||TRUEPREDICATE&&TRUEPREDICATE", true},
        {"favorite = YES && (mediaType == 2 || mediaType == 1) ", true},
    };
    expectAnswers(kQuestions);
}

TEST(PredicateTest, TakesArgumentsAsTheyAre) {
    struct Case {
        const char* format;
        std::vector<Value> arguments;
    };
    const Case cases[] = {
        {"favorite = YES && (mediaType == %d || mediaType == %d)", {1, 2}},
        {"(creationDate > %@) AND (creationDate < %@)",
            {Date{kCreated.secondsSince1970 - 1}, Date{kCreated.secondsSince1970 + 1}}},
        {"title = %@", {"Élan vital"}},
        {"%K = %@", {"camera.make", "Nikon"}},
        {"%@ = '\" OR 1 = 1'", {"\" OR 1 = 1"}},
        {"title != %@", {"' OR '' = '"}},
        {"'%d' = %@", {"%d"}},
        {"location = %@", {Value()}},
        {"mediaType IN %@", {Array::make({5, 1})}},
        {"größe BETWEEN %@", {Array::make({3, 4})}},
        {"größe > %lf AND mediaType <= %lu", {3.25, 1}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.format);
        EXPECT_TRUE(Predicate::predicateWithFormat(c.format, c.arguments)->evaluateWithObject(photo()));
    }
}

TEST(PredicateTest, TellsWhereAFormatIsNone) {
    struct Case {
        std::string format;
        std::size_t offset;
        std::string_view excerpt;
    };
    const std::string tooDeep(Predicate::kDeepestNesting + 1, '(');
    const Case cases[] = {
        {"", 0, ""},
        {"favorite", 8, ""},
        {"favorite = ", 11, ""},
        {"favorite YES", 9, "YES"},
        {"favorite = = 1", 11, "= 1"},
        {"a = 1 b = 2", 6, "b = 2"},
        {"a = 1 AND", 9, ""},
        {"(a = 1", 6, ""},
        {"a = 1)", 5, ")"},
        {"a = 'open", 4, "'open"},
        {"a = 12monkeys", 4, "12monkeys"},
        {"a = 1e999", 4, "1e999"},
        {"a = ~1", 4, "~1"},
        {"and = 1", 0, "and = 1"},
        {"# = 1", 0, "# = 1"},
        {"a CONTAINS[x] 'b'", 11, "x] 'b'"},
        {"a CONTAINS[] 'b'", 11, "] 'b'"},
        {"a BETWEEN {1}", 10, "{1}"},
        {"a BETWEEN 1", 10, "1"},
        {"a IN 1", 5, "1"},
        {"a IN {1 2}", 8, "2}"},
        {"a IN {b}", 6, "b}"},
        {"a MATCHES '('", 10, "'('"},
        {"a MATCHES 1", 10, "1"},
        {"a = %s", 4, "%s"},
        {"a = %@", 4, "%@"},
        {"a = CAST('2020', 'NSDate')", 9, "'2020', 'NSDate')"},
        {"a = \xFF", 0, "a = \xFF"},
        {tooDeep + "a = 1", Predicate::kDeepestNesting + 1, "a = 1"},
        {std::string(Predicate::kLongestFormat + 1, ' '), Predicate::kLongestFormat, " "},
        {"größe = 1 äöüäöüäöüäöüäöüäöüäöü", 12, "äöüäöüäöüäöüäöüäöüäö"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.format);
        try {
            Predicate::predicateWithFormat(c.format);
            ADD_FAILURE() << "no exception";
        } catch (const PredicateFormatException& exception) {
            EXPECT_EQ(exception.name(), "NSInvalidArgumentException");
            EXPECT_NE(
                std::string(exception.what()).find("Unable to parse the format string"), std::string::npos);
            EXPECT_EQ(exception.offset(), c.offset);
            EXPECT_EQ(exception.excerpt(), c.excerpt);
        }
    }
}

TEST(PredicateTest, RefusesArgumentsThatDoNotFit) {
    EXPECT_THROW(Predicate::predicateWithFormat("a = %d", {"1"}), PredicateFormatException);
    EXPECT_THROW(Predicate::predicateWithFormat("a = %@ AND b = %@", {1}), PredicateFormatException);
    EXPECT_THROW(Predicate::predicateWithFormat("%K = 1", {""}), PredicateFormatException);
    const std::vector<Value> elements(Predicate::kMostListElements, 1);
    const Value list(std::make_shared<Array>(elements));
    EXPECT_NO_THROW(Predicate::predicateWithFormat("a IN %@", {list}));
    EXPECT_THROW(Predicate::predicateWithFormat("a IN %@ OR a IN {1}", {list}), PredicateFormatException);
}

TEST(PredicateTest, GivesUpPatternsThatBacktrackWithoutEnd) {
    const std::string letters(64, 'a');
    const auto object = keyValueLookupOf(Value(letters));
    for (const char* format :
        {"SELF MATCHES '(a*)*(a*)*(a*)*b'", "SELF LIKE '*a*a*a*a*a*a*a*a*a*a*a*a*a*b'"}) {
        SCOPED_TRACE(format);
        EXPECT_FALSE(Predicate::predicateWithFormat(format)->evaluateWithObject(object));
    }
}

TEST(PredicateTest, WritesAFormatThatReadsTheSame) {
    struct Case {
        const char* format;
        const char* written;
    };
    constexpr Case kCases[] = {
        {"a=1&&b!=2||!c<3", "a == 1 AND b != 2 OR NOT c < 3"},
        {"(a = 1 or b = 2) and not (c = 3 and d = 4)", "(a == 1 OR b == 2) AND NOT (c == 3 AND d == 4)"},
        {"a in[cd] {'x', nil, yes, -2.5}", "a IN[cd] {\"x\", NULL, YES, -2.5}"},
        {"#between = 'a\"\\\\\\n' OR SELF = self.b", "#between == \"a\\\"\\\\\\n\" OR SELF == b"},
        {"a > CAST(-0.5, 'NSDate')", "a > CAST(-0.5, \"NSDate\")"},
        {"not truepredicate", "NOT TRUEPREDICATE"},
    };
    for (const Case& c : kCases) {
        SCOPED_TRACE(c.format);
        const auto written = Predicate::predicateWithFormat(c.format)->predicateFormat();
        EXPECT_EQ(written, c.written);
        EXPECT_EQ(Predicate::predicateWithFormat(written)->predicateFormat(), written);
    }
}

} // namespace
} // namespace exifcard
