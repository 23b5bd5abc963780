#include "ZelvoraAdapters/gtk/Foundation/Bundle.h"
#include "ZelvoraContract/BundleContract.h"

namespace zelvora::tests {

namespace {

class GtkApp final {
public:
    std::unique_ptr<platform::Bundle> makeBundle(std::optional<std::string> const& identifier)
    {
        return std::make_unique<gtk::Bundle>(identifier);
    }
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(Gtk, BundleContract, GtkApp);

}
