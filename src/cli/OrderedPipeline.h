#pragma once

#include <functional>
#include <optional>
#include <string>

namespace exifcard {

/// What became of one input.
struct FileResult {
    std::string output = {};  ///< For standard output; may be empty.
    std::string failure = {}; ///< One line about what went wrong; empty where all went well.
};

/// The three steps of a run over many files.
struct PipelineSteps {
    /// The next file's name; nothing at the end. Called by one thread at a time; may block.
    std::function<std::optional<std::string>()> take;
    /// Called by several threads at once.
    std::function<FileResult(const std::string& name)> work;
    /// Gets the results in the order of the names. Called by one thread at a time.
    std::function<void(const FileResult& result)> hand;
};

/// Works on files with up to `jobs` threads, the calling one among them, and hands the results on in the
/// order of the names. No thread is made for one job. A result waits only for those before it, and at most a
/// fixed number per thread waits, so the memory taken does not depend on the number of files. Returns when
/// all is handed on.
void runInOrder(unsigned jobs, const PipelineSteps& steps);

} // namespace exifcard
