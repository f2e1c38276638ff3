#include "cli/TextTable.h"

#include "cli/DisplayText.h"

#include <algorithm>
#include <cstddef>

namespace exifcard {
namespace {

constexpr std::string_view kEmptyCell = "–";
constexpr std::string_view kColumnGap = "  ";

struct StyleCode {
    TextStyle style;
    std::string_view begin;
};

constexpr StyleCode kStyleCodes[] = {
    {TextStyle::Bold, "\x1b[1m"},
    {TextStyle::Dim, "\x1b[2m"},
    {TextStyle::Label, "\x1b[36m"},
};
constexpr std::string_view kStyleEnd = "\x1b[0m";

std::string spaces(std::size_t count) {
    return std::string(count, ' ');
}

/// The text with `indent` columns before every line but the first.
std::string indented(std::string_view text, std::size_t indent) {
    std::string result;
    for (const char character : text) {
        result += character;
        if (character == '\n') {
            result += spaces(indent);
        }
    }
    return result;
}

} // namespace

std::string styled(std::string_view text, TextStyle style, bool usesColor) {
    const auto* const code = std::ranges::find(kStyleCodes, style, &StyleCode::style);
    if (!usesColor || code == std::end(kStyleCodes)) {
        return std::string(text);
    }
    return std::string(code->begin).append(text).append(kStyleEnd);
}

void TextTable::addRow(std::vector<std::string> cells) {
    for (std::string& cell : cells) {
        const bool isLast = &cell == &cells.back();
        cell = isLast ? displayLines(cell) : displayLine(cell);
        if (cell.empty()) {
            cell = kEmptyCell;
        }
    }
    _rows.push_back(std::move(cells));
}

std::string TextTable::text(bool usesColor) const {
    const std::vector<std::size_t> widths = columnWidths();
    std::string text;
    for (const auto& row : _rows) {
        std::size_t position = 0;
        for (std::size_t column = 0; column + 1 < row.size(); ++column) {
            const TextStyle style = column == 0 ? TextStyle::Label : TextStyle::Plain;
            const std::size_t padding = widths[column] - displayWidth(row[column]);
            text += styled(row[column], style, usesColor) + spaces(padding) + std::string(kColumnGap);
            position += widths[column] + kColumnGap.size();
        }
        const TextStyle style = row.back() == kEmptyCell ? TextStyle::Dim : TextStyle::Plain;
        text += styled(indented(row.back(), position), style, usesColor) + "\n";
    }
    return text;
}

std::vector<std::size_t> TextTable::columnWidths() const {
    std::vector<std::size_t> widths;
    for (const auto& row : _rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t column = 0; column + 1 < row.size(); ++column) {
            widths[column] = std::max(widths[column], displayWidth(row[column]));
        }
    }
    return widths;
}

std::string framed(const std::vector<std::string>& lines, std::string_view caption, bool usesColor) {
    std::size_t width = 0;
    std::vector<std::string> shown;
    for (const std::string& line : lines) {
        shown.push_back(displayLine(line));
        width = std::max(width, displayWidth(shown.back()));
    }
    std::string rule;
    for (std::size_t column = 0; column < width + 2; ++column) {
        rule += "─";
    }
    const std::string side = styled("│", TextStyle::Dim, usesColor);
    std::string text = styled("╭" + rule + "╮", TextStyle::Dim, usesColor) + "\n";
    for (const std::string& line : shown) {
        text += side + " " + line + spaces(width - displayWidth(line)) + " " + side + "\n";
    }
    text += styled("╰" + rule + "╯", TextStyle::Dim, usesColor) + "\n";
    return text + styled("  " + displayLine(caption), TextStyle::Dim, usesColor) + "\n";
}

} // namespace exifcard
