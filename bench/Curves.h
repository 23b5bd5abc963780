#pragma once

#include "bench/Comparison.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace zelvora::bench {

/// What a plot shows: a ratio for each of several lengths of a queue, for each of several ways to keep it.
class Curves final {
public:
    /// `name` is the heading of the first column of the docs' table that has the same figures.
    explicit Curves(std::string name) : m_name(std::move(name)) { }

    struct Point {
        std::size_t length = 0;
        Comparison::Ratios ratios;
        /// Of how many rounds they are.
        std::size_t rounds = 0;
    };
    void add(std::string const& way, Point const& point);

    /// Prints a line for each length, with the docs' figures in brackets.
    void print() const;
    /// Writes what gnuplot reads: for each way a block that its name begins, with the length, the median, the quartiles
    /// and the number of rounds in each line.
    void write(std::filesystem::path const& file) const;

private:
    struct Curve {
        std::string way;
        std::vector<Point> points;
    };
    std::string m_name;
    std::vector<Curve> m_curves;
};

}
