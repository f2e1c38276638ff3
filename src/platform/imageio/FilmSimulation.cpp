#include "platform/imageio/FilmSimulation.h"

#include <algorithm>
#include <span>
#include <string_view>

namespace exifcard {
namespace {

struct CodeName {
    std::int64_t code;
    std::string_view name;
};

constexpr CodeName kFilmModes[] = {
    {0x000, "Provia / Standard"},
    {0x100, "Studio Portrait"},
    {0x110, "Studio Portrait + saturation"},
    {0x120, "Astia"},
    {0x130, "Studio Portrait + sharpness"},
    {0x200, "Velvia"},
    {0x300, "Studio Portrait Ex"},
    {0x400, "Velvia"},
    {0x500, "Pro Neg. Std"},
    {0x501, "Pro Neg. Hi"},
    {0x600, "Classic Chrome"},
    {0x700, "Eterna"},
    {0x800, "Classic Neg."},
    {0x900, "Bleach Bypass"},
    {0xa00, "Nostalgic Neg."},
    {0xb00, "Reala Ace"},
};

constexpr CodeName kSaturations[] = {
    {0x000, "Normal"},
    {0x080, "Medium high"},
    {0x0c0, "Very high"},
    {0x0e0, "Highest"},
    {0x100, "High"},
    {0x180, "Medium low"},
    {0x200, "Low"},
    {0x300, "Monochrome"},
    {0x301, "Monochrome + R"},
    {0x302, "Monochrome + Ye"},
    {0x303, "Monochrome + G"},
    {0x310, "Sepia"},
    {0x400, "Low 2"},
    {0x4c0, "Very low"},
    {0x4e0, "Lowest"},
    {0x500, "Acros"},
    {0x501, "Acros + R"},
    {0x502, "Acros + Ye"},
    {0x503, "Acros + G"},
    {0x8000, "Film simulation"},
};

std::string nameOf(std::int64_t code, std::span<const CodeName> names) {
    const auto known = std::ranges::find(names, code, &CodeName::code);
    return std::string(known == names.end() ? "Unknown" : known->name);
}

} // namespace

std::string fujiFilmModeName(std::int64_t code) {
    return nameOf(code, kFilmModes);
}

std::string fujiSaturationName(std::int64_t code) {
    return nameOf(code, kSaturations);
}

} // namespace exifcard
