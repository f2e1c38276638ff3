#pragma once

#include "platform/foundation/Value.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace exifcard {

/// Writes one JSON text, front to back, with the commas in their places. Text comes out as UTF-8 whatever
/// goes in.
class JsonWriter {
public:
    JsonWriter& beginObject();
    JsonWriter& endObject();
    JsonWriter& beginArray();
    JsonWriter& endArray();
    /// The next value stands under this name.
    JsonWriter& key(std::string_view name);

    JsonWriter& text(std::string_view value);
    /// Null for nothing.
    JsonWriter& textOrNull(const std::optional<std::string>& value);
    JsonWriter& integer(std::int64_t value);
    JsonWriter& boolean(bool value);
    /// The shortest digits that read back as the same number; null for what is no finite number.
    JsonWriter& number(double value);
    JsonWriter& number(float value);
    JsonWriter& null();
    /// Null for nothing; data as base64; a date as ISO 8601 in the local zone; containers element by element.
    JsonWriter& value(const Value& value);

    /// A file's name under "file"; one that is not UTF-8 as null, with its bytes under "fileBytes".
    JsonWriter& file(std::string_view name);

    /// The text so far; the writer is empty afterwards.
    std::string take();

private:
    void separate();
    void container(const Value& value);

    std::string _text;
    bool _needsComma = false;
};

} // namespace exifcard
