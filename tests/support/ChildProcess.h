#pragma once

#include <csignal>
#include <cstdlib>
#include <functional>

#include <sys/wait.h>
#include <unistd.h>

namespace exifcard {

/// A piece of a test in a process of its own. Make it before the test has threads.
class ChildProcess {
public:
    /// @param succeeds  Its answer is what `succeeded` answers.
    explicit ChildProcess(const std::function<bool()>& succeeds) : _process(fork()) {
        if (_process == 0) {
            _exit(succeeds() ? EXIT_SUCCESS : EXIT_FAILURE);
        }
    }
    ~ChildProcess() { kill(); }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// Waits for its end.
    bool succeeded() {
        int status = -1;
        const bool hasEnded = waitpid(_process, &status, 0) == _process;
        _process = -1;
        return hasEnded && WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS;
    }
    /// Ends it at once, wherever it is.
    void kill() {
        if (_process > 0) {
            ::kill(_process, SIGKILL);
            waitpid(_process, nullptr, 0);
            _process = -1;
        }
    }

private:
    pid_t _process;
};

} // namespace exifcard
