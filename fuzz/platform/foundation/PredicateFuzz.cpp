#include "platform/foundation/Predicate.h"

#include "platform/foundation/Array.h"
#include "platform/foundation/Dictionary.h"

#include <cstdint>
#include <cstdlib>

namespace exifcard {
namespace {

void require(bool isTrue) {
    if (!isTrue) {
        std::abort();
    }
}

KeyValueLookup photo() {
    return keyValueLookupOf(Dictionary::make(
        {{"title", "Élan vital"}, {"favorite", true}, {"duration", 2.5}, {"creationDate", Date{1}},
            {"tags", Array::make({"sea", 7})}, {"a", Dictionary::make({{"b", "c"}})}}));
}

PredicatePtr predicateOf(std::string_view format, const std::vector<Value>& arguments) {
    try {
        return Predicate::predicateWithFormat(format, arguments);
    } catch (const PredicateFormatException& exception) {
        require(exception.offset() <= format.size());
        require(format.substr(exception.offset()).starts_with(exception.excerpt()));
        return nullptr;
    }
}

/// What is written reads as the same again, unless the spelling of it became too long.
void requireSameWhenWritten(const Predicate& predicate) {
    const auto format = predicate.predicateFormat();
    if (format.size() > Predicate::kLongestFormat) {
        return;
    }
    const auto again = predicateOf(format, {});
    require(again != nullptr);
    require(again->predicateFormat() == format);
    require(again->evaluateWithObject(photo()) == predicate.evaluateWithObject(photo()));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    const std::string_view format(reinterpret_cast<const char*>(bytes), count);
    const auto predicate = predicateOf(format, {"title", 7, 2.5, Array::make({1, 2})});
    if (predicate) {
        requireSameWhenWritten(*predicate);
    }
    return 0;
}

} // namespace exifcard
