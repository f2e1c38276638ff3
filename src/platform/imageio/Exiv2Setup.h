#pragma once

#include <functional>

namespace exifcard {

/// Calls `use`, in which Exiv2 may be called: its messages go nowhere, and what
/// it throws about broken data ends `use` and nothing else.
void withExiv2(const std::function<void()>& use);

} // namespace exifcard
