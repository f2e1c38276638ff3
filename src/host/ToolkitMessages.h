#pragma once

namespace exifcard {

/// What the toolkit says goes on to where it would have gone, but for what nobody can do anything about.
/// Once, at the program's start.
void passOnToolkitMessages();

/// While this lives the toolkit opens the display. Without one the toolkit would abort the program; instead
/// the program ends with status 1 and one line on standard error that gives the cause. With one, what was
/// said meanwhile is passed on. Main thread, after `passOnToolkitMessages`.
class DisplayOpening {
public:
    DisplayOpening();
    ~DisplayOpening();
    DisplayOpening(const DisplayOpening&) = delete;
    DisplayOpening& operator=(const DisplayOpening&) = delete;
};

} // namespace exifcard
