#pragma once

#include "examples/host/Tour.h"

#include <string>

namespace zelvora::examples {

/// Uses every part of the SDK once. In the first walk the collector fails at the end, so that events are left for the
/// second walk, which continues after a restart.
class Walk final : public Tour {
public:
    using Tour::Tour;

private:
    // Tour
    void makeSteps() override;

    void walkFirst();
    void walkSecond();

    void openShop();
    void buySomething();
    void useBridge();
    void useFrame();
    void followLinks();
    void closeShop();
    void readBackAfterRestart();
    void visitCollector();
    void uploadWhatWasLeft();

    void printQueue(std::string const& when);
    bool clickAndExpect(std::string const& id, std::string const& answer);
};

}
