#pragma once

#include "ZelvoraPlatform/UIKit/UIView.h"

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

namespace zelvora::shared {

/// The views of a tree by index: parents before their children, the root at 0.
class LayoutTree final {
public:
    struct Node {
        platform::UIView* view = nullptr;
        /// Itself for the root.
        std::size_t parent = 0;
    };

    explicit LayoutTree(platform::UIView& root) { add(root, 0); }

    [[nodiscard]] std::vector<Node> const& nodes() const { return m_nodes; }
    [[nodiscard]] std::size_t indexOf(platform::UIView const& view) const { return m_indices.at(&view); }
    /// "root/2/0".
    [[nodiscard]] std::string pathOf(std::size_t index) const;

private:
    void add(platform::UIView& view, std::size_t parent);

    std::vector<Node> m_nodes;
    std::unordered_map<platform::UIView const*, std::size_t> m_indices;
};

}
