#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zr310 {

// A plain-text table with columns padded to their widest cell. Chinese
// characters count as two columns, as a terminal shows them.
class TextTable {
public:
    explicit TextTable(std::vector<std::string> headings);

    void addRow(std::vector<std::string> cells);
    std::string render() const;

private:
    std::vector<std::vector<std::string>> m_rows;
};

// Terminal columns taken by a UTF-8 text.
std::size_t displayWidth(std::string_view utf8);

} // namespace zr310
