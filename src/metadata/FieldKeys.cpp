#include "metadata/FieldKeys.h"

#include "metadata/FieldKeyTable.h"

#include <array>

namespace exifcard {
namespace {

using fieldtable::kFields;

/// Three times the number of keys, so that few share a slot.
constexpr std::size_t kSlotCount = 256;
constexpr std::uint8_t kEmpty = 0xFF;
static_assert(std::size(kFields) < kEmpty);

/// The slot at which the search for `key` begins, by the FNV-1a hash of its letters.
constexpr std::size_t firstSlot(std::string_view key) {
    std::uint32_t hash = 2166136261;
    for (const char letter : key) {
        hash = (hash ^ static_cast<unsigned char>(letter)) * 16777619;
    }
    return hash % kSlotCount;
}

/// Positions in the table of fields. Every row of every photo is looked up here.
constexpr auto kSlots = [] {
    std::array<std::uint8_t, kSlotCount> slots = {};
    slots.fill(kEmpty);
    for (std::size_t position = 0; position < std::size(kFields); ++position) {
        std::size_t slot = firstSlot(kFields[position].key);
        while (slots[slot] != kEmpty) {
            slot = (slot + 1) % kSlotCount;
        }
        slots[slot] = static_cast<std::uint8_t>(position);
    }
    return slots;
}();

} // namespace

std::span<const FieldKey> fieldKeys() {
    return kFields;
}

const FieldKey* findFieldKey(std::string_view key) {
    for (std::size_t slot = firstSlot(key); kSlots[slot] != kEmpty; slot = (slot + 1) % kSlotCount) {
        const FieldKey& field = kFields[kSlots[slot]];
        if (field.key == key) {
            return &field;
        }
    }
    return nullptr;
}

} // namespace exifcard
