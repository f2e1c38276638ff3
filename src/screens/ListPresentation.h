#pragma once

#include <cstdint>

namespace exifcard {

/// How a list shows its photos. By default the settings answer, call for call.
class ListPresentation {
public:
    ListPresentation() = default;
    virtual ~ListPresentation() = default;
    ListPresentation(const ListPresentation&) = delete;
    ListPresentation& operator=(const ListPresentation&) = delete;

    /// 0 and 2 cards, 1 and 3 grids; 3 selects; 2 shows no overlay.
    virtual std::uint64_t viewType() const;
    virtual void setViewType(std::uint64_t viewType);
    virtual std::uint64_t previousViewType() const;
    virtual bool showsDetailsOnGrid() const;
};

} // namespace exifcard
