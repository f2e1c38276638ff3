#pragma once

namespace exifcard {

/// For a program that reads many files one after the other: memory that is free after one stays for the next.
/// The C library would give it back to the system and fetch it again several times a file, which costs a
/// twentieth of the time, and with several threads more, as each waits there for the others. Some megabytes
/// stay in use by that.
void keepMemoryBetweenFiles();

} // namespace exifcard
