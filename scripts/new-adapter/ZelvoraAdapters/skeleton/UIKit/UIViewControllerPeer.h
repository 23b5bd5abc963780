#pragma once

#include "ZelvoraAdapters/skeleton/missing.h"
#include "ZelvoraPlatform/UIKit/UINavigationController.h"
#include "ZelvoraPlatform/UIKit/UIViewController.h"

#include <memory>

namespace zelvora::skeleton {

/// `ZelvoraAdapters/shared` decides what a presentation and a dismissal do.
class UIViewControllerPeer final : public platform::UIViewController::Peer {
public:
    explicit UIViewControllerPeer(platform::UIViewController& /*owner*/) { }

    // platform::UIViewController::Peer
    [[nodiscard]] std::shared_ptr<platform::UIView> loadView() override { missing("UIViewControllerPeer::loadView"); }
    [[nodiscard]] std::shared_ptr<platform::UINavigationController> navigationController() const override
    {
        missing("UIViewControllerPeer::navigationController");
    }
    void setModalPresentationStyle(platform::UIModalPresentationStyle) override
    {
        missing("UIViewControllerPeer::setModalPresentationStyle");
    }
    void present(std::shared_ptr<platform::UIViewController>, platform::Animated) override
    {
        missing("UIViewControllerPeer::present");
    }
    void dismiss(platform::Animated) override { missing("UIViewControllerPeer::dismiss"); }
};

}
