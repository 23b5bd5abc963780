#include "bench/Curves.h"

#include "bench/documentedFigure.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>

namespace zelvora::bench {

namespace {

// "1.7", "12", "250,000": two digits, because more of them are the machine's.
std::string twoDigits(double figure)
{
    std::array<char, 64> text {};
    if (figure < 10) {
        std::snprintf(text.data(), text.size(), "%.1f", figure);
        return text.data();
    }
    auto const unit = std::pow(10, std::floor(std::log10(figure)) - 1);
    std::snprintf(text.data(), text.size(), "%.0f", std::round(figure / unit) * unit);
    std::string grouped = text.data();
    for (auto position = static_cast<std::ptrdiff_t>(grouped.size()) - 3; position > 0; position -= 3)
        grouped.insert(static_cast<std::size_t>(position), ",");
    return grouped;
}

}

void Curves::add(std::string const& way, Point const& point)
{
    auto found = std::ranges::find(m_curves, way, &Curve::way);
    if (found == m_curves.end())
        found = m_curves.insert(found, { way, {} });
    found->points.push_back(point);
}

void Curves::print() const
{
    std::fprintf(stderr, "  %s (in brackets: in the docs)\n  %10s", m_name.c_str(), "");
    for (auto const& curve : m_curves)
        std::fprintf(stderr, " %24s", curve.way.c_str());
    for (std::size_t index = 0; index < m_curves.front().points.size(); ++index) {
        auto const length = twoDigits(static_cast<double>(m_curves.front().points[index].length));
        std::fprintf(stderr, "\n  %10s", length.c_str());
        for (auto const& curve : m_curves) {
            auto const figure = twoDigits(curve.points[index].ratios.median);
            auto const documented = documentedCell(m_name, length, curve.way);
            std::fprintf(stderr, " %24s", (figure + " (" + documented + ")").c_str());
        }
    }
    std::fprintf(stderr, "\n");
}

void Curves::write(std::filesystem::path const& file) const
{
    std::ofstream out(file);
    for (auto const& curve : m_curves) {
        out << "# " << curve.way << '\n';
        for (auto const& [length, ratios, rounds] : curve.points)
            out << length << ' ' << ratios.median << ' ' << ratios.lower << ' ' << ratios.upper << ' ' << rounds
                << '\n';
        out << "\n\n";
    }
    out.close();
    if (out)
        return;
    std::fprintf(stderr, "%s could not be written.\n", file.c_str());
    std::exit(EXIT_FAILURE); // NOLINT(concurrency-mt-unsafe)
}

}
