#pragma once

#include "platform/foundation/Value.h"

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

namespace exifcard {

/// One argument of a format: a number or an object.
class FormatArgument {
public:
    enum class Kind { Integer, Real, Text, Object };

    // NOLINTBEGIN(google-explicit-constructor): arguments stand in a call as they are.
    FormatArgument(int value) : _kind(Kind::Integer), _integer(value) {}
    FormatArgument(unsigned value) : _kind(Kind::Integer), _integer(value) {}
    FormatArgument(long value) : _kind(Kind::Integer), _integer(value) {}
    FormatArgument(unsigned long value) : _kind(Kind::Integer), _integer(static_cast<std::int64_t>(value)) {}
    FormatArgument(long long value) : _kind(Kind::Integer), _integer(value) {}
    FormatArgument(float value) : _kind(Kind::Real), _real(value) {}
    FormatArgument(double value) : _kind(Kind::Real), _real(value) {}
    FormatArgument(std::string_view value) : _kind(Kind::Text), _text(value) {}
    FormatArgument(const std::string& value) : _kind(Kind::Text), _text(value) {}
    FormatArgument(const char* value) : _kind(Kind::Text), _text(value) {}
    FormatArgument(const Value& value) : _kind(Kind::Object), _object(&value) {}
    // NOLINTEND(google-explicit-constructor)

    Kind kind() const { return _kind; }
    std::int64_t integer() const { return _integer; }
    double real() const { return _real; }
    std::string_view text() const { return _text; }
    const Value& object() const { return *_object; }

private:
    Kind _kind;
    std::int64_t _integer = 0;
    double _real = 0;
    std::string_view _text;
    const Value* _object = nullptr;
};

/// Fills a format of the platform's: "%@" takes an object or a text, "%d %i %u
/// %x %X %ld %lld %llx %lu" an integer, "%f %e %g" a real, "%%" is a percent
/// sign; flags, width, precision and positions ("%2$@") as C has them.
///
/// @param arguments  Looked at only during the call.
/// @return The text. A format that does not fit its arguments (a wrong type, a
///         missing argument, an unknown conversion) cannot crash or print
///         memory: what does not fit stands in the text as it was written.
std::string stringWithFormat(std::string_view format, std::initializer_list<FormatArgument> arguments);

/// Whether `translated` takes arguments of the same kinds at the same positions
/// as `original`, so that it can be filled in its place.
bool formatsAgree(std::string_view original, std::string_view translated);

} // namespace exifcard
