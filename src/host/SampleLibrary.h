#pragma once

#include <QTemporaryDir>

#include <functional>
#include <string>
#include <vector>

namespace exifcard {

/// A home folder that ends with the program: a photo library of some files, and a conversation of them. The
/// user's own is not touched.
class SampleLibrary {
public:
    /// Before anything asks for the program's folders.
    SampleLibrary();

    /// Does the work on a queue and runs the main queue until it is done, as what waits for that queue must.
    static void runOnQueue(const std::function<void()>& work);

    bool isValid() const { return _home.isValid(); }
    /// Takes the files into the library. Runs the main queue meanwhile.
    /// @return What went wrong: one sentence; empty without.
    std::string import(const std::vector<std::string>& files);
    /// Sends all files but the last, which then waits in the input field.
    std::string fillConversation(const std::string& name, const std::vector<std::string>& files);

private:
    QTemporaryDir _home;
};

} // namespace exifcard
