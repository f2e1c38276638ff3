#pragma once

#include "platform/foundation/Locale.h"

#include <cstdint>
#include <memory>
#include <string>

namespace exifcard {

/// Writes a number of bytes for people: "2.5 MB", "Zero KB", "1.50 GB (1,500,000,000 bytes)".
///
/// Thread-safe; keep one rather than making it anew.
class ByteCountFormatter {
public:
    /// File and decimal count in thousands, memory and binary in 1024s.
    enum class CountStyle { File = 0, Memory = 1, Decimal = 2, Binary = 3 };

    struct Options {
        CountStyle countStyle = CountStyle::File;
        bool isAdaptive = true;
        bool zeroPadsFractionDigits = false;
        bool includesActualByteCount = false;
    };

    explicit ByteCountFormatter(Options options, const Locale& locale = Locale::current());
    ~ByteCountFormatter();
    ByteCountFormatter(const ByteCountFormatter&) = delete;
    ByteCountFormatter& operator=(const ByteCountFormatter&) = delete;

    std::string stringFromByteCount(std::int64_t count) const;

private:
    class Implementation;
    std::unique_ptr<const Implementation> _implementation;
};

} // namespace exifcard
