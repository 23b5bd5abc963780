#pragma once

#include "examples/host/Tour.h"

namespace zelvora::examples {

/// Shows every screen of the app and of the shop, and saves a picture of each. It needs a fresh install.
class Gallery final : public Tour {
public:
    using Tour::Tour;

private:
    // Tour
    void makeSteps() override;

    void showHome();
    void showLoading();
    void showShop();
    void showDeveloperPages();
    void showFailure();
    void showHomeForDevelopers();

    void scrollTo(char const* id);
    [[nodiscard]] bool siteFails(char const* how);
};

}
