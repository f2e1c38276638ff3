#include "platform/photos/import/Fingerprint.h"

// The functions become part of this file: nothing is linked for two calls.
#define XXH_INLINE_ALL
#include <xxhash.h>

#include <algorithm>
#include <cstddef>

namespace exifcard {
namespace {

constexpr std::size_t kPartSize = std::size_t(64) << 10U;

/// 0 stands for none where fingerprints are kept.
std::int64_t numberOfHash(XXH64_hash_t hash) {
    return static_cast<std::int64_t>(std::max<XXH64_hash_t>(hash, 1));
}

} // namespace

std::int64_t quickFingerprint(const Data& file) {
    const std::size_t firstPart = std::min(file.size(), kPartSize);
    const std::size_t lastPart = std::min(file.size() - firstPart, kPartSize);
    const XXH64_hash_t first = XXH3_64bits_withSeed(file.data(), firstPart, file.size());
    if (lastPart == 0) {
        return numberOfHash(first);
    }
    return numberOfHash(XXH3_64bits_withSeed(file.bytes().last(lastPart).data(), lastPart, first));
}

std::int64_t wholeFingerprint(const Data& file) {
    return numberOfHash(XXH3_64bits(file.data(), file.size()));
}

} // namespace exifcard
