#include "text_table.h"

#include <algorithm>

namespace zr310 {

std::size_t displayWidth(std::string_view utf8) {
    std::size_t width = 0;
    for (std::size_t i = 0; i < utf8.size();) {
        const auto lead = static_cast<unsigned char>(utf8[i]);
        const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        // Three-byte sequences from U+1100 up are mostly wide (CJK, full-width forms).
        width += length >= 3 ? 2 : 1;
        i += length;
    }
    return width;
}

TextTable::TextTable(std::vector<std::string> headings) {
    m_rows.push_back(std::move(headings));
}

void TextTable::addRow(std::vector<std::string> cells) {
    m_rows.push_back(std::move(cells));
}

std::string TextTable::render() const {
    std::vector<std::size_t> widths(m_rows.front().size(), 0);
    for (const auto& row : m_rows)
        for (std::size_t c = 0; c < row.size() && c < widths.size(); ++c)
            widths[c] = std::max(widths[c], displayWidth(row[c]));

    std::string out;
    for (const auto& row : m_rows) {
        std::string line;
        for (std::size_t c = 0; c < row.size() && c < widths.size(); ++c) {
            line += row[c];
            if (c + 1 < row.size())
                line.append(widths[c] - displayWidth(row[c]) + 2, ' ');
        }
        line.erase(line.find_last_not_of(' ') + 1);
        out += line + "\n";
    }
    return out;
}

} // namespace zr310
