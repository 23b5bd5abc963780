#pragma once

#include "ZelvoraAdapters/shared/Layout/LayoutSolver.h"
#include "ZelvoraAdapters/shared/Layout/internal/LayoutAxis.h"
#include "ZelvoraAdapters/shared/Layout/internal/LayoutTree.h"

#include <vector>

namespace zelvora::shared {

/// What the constraints of a solved tree left open or contradict, view by view.
[[nodiscard]] std::vector<LayoutAmbiguity> findAmbiguities(
    LayoutTree const& tree, LayoutAxis const& horizontal, LayoutAxis const& vertical, LayoutMetrics const& metrics);

}
