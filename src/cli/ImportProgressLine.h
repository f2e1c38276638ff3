#pragma once

#include "platform/photos/import/Importer.h"

#include <chrono>
#include <string>

namespace exifcard {

/// "[=====>    ] 5000/10000 files, 20/40 MB, 12 MB/s, 0:02 left"; while folders are looked
/// through, how many photos were seen.
/// @param seconds  Since reading began.
std::string importProgressText(const ImportProgress& progress, double seconds);

/// A line that tells how far an import is: on standard error, where that is a terminal, and gone when the
/// import ends.
class ImportProgressLine {
public:
    explicit ImportProgressLine(bool isWanted);
    ~ImportProgressLine() { clear(); }
    ImportProgressLine(const ImportProgressLine&) = delete;
    ImportProgressLine& operator=(const ImportProgressLine&) = delete;

    void show(const ImportProgress& progress);
    /// Takes the line away, so that another one can be written.
    void clear();

private:
    using Clock = std::chrono::steady_clock;

    bool _isWanted;
    bool _isShown = false;
    bool _isReading = false;
    Clock::time_point _readingSince;
    Clock::time_point _nextDrawing;
};

} // namespace exifcard
