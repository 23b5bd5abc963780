#include "ZelvoraAdapters/shared/Layout/internal/LayoutTree.h"

namespace zelvora::shared {

std::string LayoutTree::pathOf(std::size_t index) const
{
    if (index == 0)
        return "root";
    auto const& [view, parent] = m_nodes[index];
    auto const& siblings = m_nodes[parent].view->subviews();
    std::size_t place = 0;
    while (siblings[place].get() != view)
        ++place;
    return pathOf(parent) + '/' + std::to_string(place);
}

void LayoutTree::add(platform::UIView& view, std::size_t parent)
{
    auto const index = m_nodes.size();
    m_indices.emplace(&view, index);
    m_nodes.push_back({ &view, parent });
    for (auto const& child : view.subviews())
        add(*child, index);
}

}
