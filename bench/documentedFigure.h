#pragma once

#include <string>

namespace zelvora::bench {

/// What docs/performance.md has in its row for this name and unit, such as "4.9"; empty if it has no such row.
[[nodiscard]] std::string documentedFigure(std::string const& name, std::string const& unit);

/// What it has in this row and column of the table whose first column has this heading; empty if there is no such cell.
[[nodiscard]] std::string documentedCell(std::string const& table, std::string const& row, std::string const& column);

}
