#pragma once

#include "examples/host/Tour.h"

namespace zelvora::examples {

/// Opens the shop once, as someone who has looked at the home screen for a moment, and prints how long it took until
/// its page spoke: "opening MILLISECONDS" on standard error. The user has answered before.
class Opening final : public Tour {
public:
    using Tour::Tour;

private:
    // Tour
    void makeSteps() override;
};

}
