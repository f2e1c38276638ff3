#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace exifcard {

/// How a piece of text stands out on a terminal.
enum class TextStyle { Plain, Bold, Dim, Label };

/// The text in this style, or as it is without colour.
std::string styled(std::string_view text, TextStyle style, bool usesColor);

/// Columns under each other, for people. Cells are made safe to show; the last one of a row may have several
/// lines.
class TextTable {
public:
    /// One row; an empty cell becomes a dash.
    void addRow(std::vector<std::string> cells);

    /// All rows, each with a line end, the first column styled as a label.
    std::string text(bool usesColor) const;

private:
    std::vector<std::size_t> columnWidths() const;

    std::vector<std::vector<std::string>> _rows;
};

/// The lines in a frame, as a bubble of a conversation.
/// @param caption  Stands under the frame.
std::string framed(const std::vector<std::string>& lines, std::string_view caption, bool usesColor);

} // namespace exifcard
