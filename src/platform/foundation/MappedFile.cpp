#include "platform/foundation/MappedFile.h"

#include "platform/foundation/FileDescriptor.h"
#include "platform/foundation/MappingBatch.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <mutex>
#include <utility>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace exifcard {
namespace {

struct Mapping {
    std::atomic<std::uintptr_t> begin = 0; ///< 0 while the slot is free.
    std::atomic<std::uintptr_t> end = 0;
    std::atomic<bool> isTaken = false;
    std::atomic<bool> wasCutShort = false;
};

/// More files than this are never mapped at once: a page of a list holds at most a hundred records.
constexpr std::size_t kMostMappings = 4096;
std::array<Mapping, kMostMappings> mappings;
struct sigaction previousAction;

/// A copy of so little is quicker than a mapping, which must be made, filled page by page and taken down
/// again.
constexpr std::size_t kLargestCopy = std::size_t(128) << 10U;

/// Cameras' metadata lie within so much of the beginning.
constexpr off_t kFetchedEnd = off_t(128) << 10;

void passOn(int signalNumber, siginfo_t* info, void* context) {
    if ((previousAction.sa_flags & SA_SIGINFO) != 0 && previousAction.sa_sigaction != nullptr) {
        previousAction.sa_sigaction(signalNumber, info, context);
        return;
    }
    std::signal(signalNumber, SIG_DFL);
    std::raise(signalNumber);
}

/// Runs on the thread that touched the missing page: only calls that a signal handler may make.
void onBusError(int signalNumber, siginfo_t* info, void* context) {
    const auto address = reinterpret_cast<std::uintptr_t>(info->si_addr);
    for (Mapping& mapping : mappings) {
        const auto begin = mapping.begin.load(std::memory_order_acquire);
        if (begin == 0 || address < begin || address >= mapping.end.load(std::memory_order_acquire)) {
            continue;
        }
        const auto pageSize = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
        void* const page = reinterpret_cast<void*>(address / pageSize * pageSize);
        if (mmap(page, pageSize, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED, -1, 0) != MAP_FAILED) {
            mapping.wasCutShort.store(true, std::memory_order_release);
            return;
        }
        break;
    }
    passOn(signalNumber, info, context);
}

void installHandler() {
    static std::once_flag once;
    std::call_once(once, [] {
        struct sigaction action = {};
        action.sa_sigaction = onBusError;
        action.sa_flags = SA_SIGINFO | SA_NODEFER;
        sigemptyset(&action.sa_mask);
        sigaction(SIGBUS, &action, &previousAction);
    });
}

/// The number of a slot that now guards the range, or -1 when all are taken.
int takeSlot(std::uintptr_t begin, std::size_t size) {
    static std::atomic<std::size_t> next = 0;
    for (std::size_t tried = 0; tried < kMostMappings; ++tried) {
        const std::size_t slot = next.fetch_add(1, std::memory_order_relaxed) % kMostMappings;
        Mapping& mapping = mappings[slot];
        if (mapping.isTaken.exchange(true, std::memory_order_acq_rel)) {
            continue;
        }
        mapping.wasCutShort.store(false, std::memory_order_relaxed);
        mapping.end.store(begin + size, std::memory_order_release);
        mapping.begin.store(begin, std::memory_order_release);
        return static_cast<int>(slot);
    }
    return -1;
}

/// Some disks read megabytes ahead of the first page that is touched.
void fetchEnds(int file, void* address, std::size_t size) {
    const auto length = static_cast<off_t>(size);
    if (length > 2 * kFetchedEnd && madvise(address, size, MADV_RANDOM) == 0) {
        posix_fadvise(file, 0, kFetchedEnd, POSIX_FADV_WILLNEED);
        posix_fadvise(file, length - kFetchedEnd, kFetchedEnd, POSIX_FADV_WILLNEED);
    }
}

/// The file's first bytes. How many there are; fewer where it became shorter or cannot be read.
std::size_t bytesRead(int file, std::uint8_t* bytes, std::size_t size) {
    std::size_t done = 0;
    while (done < size) {
        const ssize_t read = pread(file, bytes + done, size - done, static_cast<off_t>(done));
        if (read > 0) {
            done += static_cast<std::size_t>(read);
        } else if (read == 0 || errno != EINTR) {
            break;
        }
    }
    return done;
}

} // namespace

std::unique_ptr<MappedFile> MappedFile::open(const std::string& path, Reading reading) {
    // O_NONBLOCK: opening a FIFO without a writer must not wait for one.
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat status = {};
    if (!file.isOpen() || fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return nullptr;
    }
    std::unique_ptr<MappedFile> opened(new MappedFile);
    const auto size = static_cast<std::size_t>(status.st_size);
    if (size <= kLargestCopy) {
        opened->copy(file.number(), size);
        return opened;
    }
    return opened->map(file.number(), size, reading) ? std::move(opened) : nullptr;
}

void MappedFile::copy(int file, std::size_t size) {
    _copy = std::make_unique_for_overwrite<std::uint8_t[]>(size);
    _bytes = {_copy.get(), size};
    const std::size_t read = bytesRead(file, _copy.get(), size);
    _isCopyCutShort = read < size;
    std::fill(_copy.get() + read, _copy.get() + size, std::uint8_t(0));
}

bool MappedFile::map(int file, std::size_t size, Reading reading) {
    installHandler();
    _batch = MappingBatch::withRoomFor(size);
    void* const address =
        _batch ? _batch->map(file, size) : mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
    if (address == nullptr || address == MAP_FAILED) {
        return false;
    }
    _bytes = {static_cast<const std::uint8_t*>(address), size};
    if (reading == Reading::Ends) {
        fetchEnds(file, address, size);
    }
    _slot = takeSlot(reinterpret_cast<std::uintptr_t>(address), size);
    return _slot >= 0;
}

MappedFile::~MappedFile() {
    if (_slot >= 0) {
        mappings[static_cast<std::size_t>(_slot)].begin.store(0, std::memory_order_release);
    }
    if (!_copy && !_bytes.empty() && !_batch) {
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): munmap takes what mmap gave.
        munmap(const_cast<std::uint8_t*>(_bytes.data()), _bytes.size());
    }
    if (_slot >= 0) {
        mappings[static_cast<std::size_t>(_slot)].isTaken.store(false, std::memory_order_release);
    }
}

bool MappedFile::wasCutShort() const {
    return _slot < 0 ? _isCopyCutShort
                     : mappings[static_cast<std::size_t>(_slot)].wasCutShort.load(std::memory_order_acquire);
}

} // namespace exifcard
