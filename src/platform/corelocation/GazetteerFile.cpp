#include "platform/corelocation/GazetteerFile.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace exifcard {
namespace {

using gazetteer::kAlignment;

/// The one list of what lies in a file, for reading and for writing.
template<typename Visit>
void visitArrays(gazetteer::Header& header, GazetteerArrays& arrays, Visit visit) {
    visit(header.nodes, arrays.nodes);
    visit(header.leaves, arrays.leaves);
    visit(header.patches, arrays.patches);
    visit(header.candidates, arrays.candidates);
    visit(header.records, arrays.records);
    visit(header.countryCodes, arrays.countryCodes);
    visit(header.cells, arrays.cells);
    visit(header.runs, arrays.runs);
    visit(header.vertices, arrays.vertices);
    visit(header.countriesOfVertices, arrays.countriesOfVertices);
}

template<typename Element>
std::optional<std::span<const Element>> elementsAt(
    std::span<const std::uint8_t> file, const gazetteer::Section& section) {
    // Both numbers have 32 bits, so that nothing overflows here.
    if (section.offset % kAlignment != 0 || section.offset > file.size() ||
        section.count > (file.size() - section.offset) / sizeof(Element)) {
        return std::nullopt;
    }
    const auto* const first = reinterpret_cast<const Element*>(file.data() + section.offset);
    return std::span(first, section.count);
}

} // namespace

std::optional<GazetteerArrays> arraysOfGazetteerFile(std::span<const std::uint8_t> file) {
    gazetteer::Header header;
    if (file.size() < sizeof header) {
        return std::nullopt;
    }
    std::memcpy(&header, file.data(), sizeof header);
    if (header.magic != gazetteer::kMagic || header.version != gazetteer::kVersion ||
        header.fileSize != file.size()) {
        return std::nullopt;
    }
    GazetteerArrays arrays;
    bool isWhole = true;
    visitArrays(header, arrays, [&]<typename Element>(auto& section, std::span<const Element>& array) {
        const auto elements = elementsAt<Element>(file, section);
        isWhole = isWhole && elements;
        array = elements.value_or(std::span<const Element>());
    });
    return isWhole ? std::optional(arrays) : std::nullopt;
}

std::vector<std::uint8_t> gazetteerFileWithArrays(GazetteerArrays arrays) {
    gazetteer::Header header;
    std::vector<std::uint8_t> file;
    file.resize(sizeof header);
    visitArrays(header, arrays, [&file](auto& section, auto& array) {
        const std::size_t offset = (file.size() + kAlignment - 1) / kAlignment * kAlignment;
        section = {static_cast<std::uint32_t>(offset), static_cast<std::uint32_t>(array.size())};
        file.resize(offset + array.size_bytes());
        std::ranges::copy(std::as_bytes(array),
            std::as_writable_bytes(std::span(file)).begin() + static_cast<std::ptrdiff_t>(offset));
    });
    header.fileSize = static_cast<std::uint32_t>(file.size());
    std::memcpy(file.data(), &header, sizeof header);
    return file;
}

} // namespace exifcard
