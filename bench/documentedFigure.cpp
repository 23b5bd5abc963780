#include "bench/documentedFigure.h"

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <string_view>
#include <vector>

namespace zelvora::bench {

namespace {

std::string trimmed(std::string_view text)
{
    auto const first = text.find_first_not_of(' ');
    auto const last = text.find_last_not_of(' ');
    return first == std::string_view::npos ? std::string() : std::string(text.substr(first, last - first + 1));
}

// The cells of a line of a table; none if it is not one.
std::vector<std::string> cellsOf(std::string_view line)
{
    std::vector<std::string> cells;
    if (!line.starts_with('|'))
        return cells;
    line.remove_prefix(1);
    for (auto end = line.find('|'); end != std::string_view::npos; end = line.find('|')) {
        cells.push_back(trimmed(line.substr(0, end)));
        line.remove_prefix(end + 1);
    }
    return cells;
}

}

std::string documentedFigure(std::string const& name, std::string const& unit)
{
    std::ifstream document(ZELVORA_SOURCE_TREE "/docs/performance.md");
    for (std::string line; std::getline(document, line);) {
        auto const cells = cellsOf(line);
        if (cells.size() >= 3 && cells[0] == name && cells[2] == unit)
            return cells[1];
    }
    return {};
}

std::string documentedCell(std::string const& table, std::string const& row, std::string const& column)
{
    std::ifstream document(ZELVORA_SOURCE_TREE "/docs/performance.md");
    std::vector<std::string> headings;
    for (std::string line; std::getline(document, line);) {
        auto const cells = cellsOf(line);
        if (cells.empty())
            headings.clear();
        else if (headings.empty())
            headings = cells;
        else if (headings[0] == table && cells[0] == row) {
            auto const index = static_cast<std::size_t>(std::ranges::find(headings, column) - headings.begin());
            return index < cells.size() ? cells[index] : std::string();
        }
    }
    return {};
}

}
