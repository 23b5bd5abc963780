#include "ZelvoraPlatform/UIKit/UIViewController.h"

#include "ZelvoraPlatform/Platform.h"
#include "ZelvoraPlatform/UIKit/UINavigationController.h"

namespace zelvora::platform {

UIViewController::UIViewController(std::optional<std::string_view> nativeClass)
    : m_peer(Platform::current().makeViewControllerPeer(*this, nativeClass))
{
}

UIViewController::UIViewController(std::unique_ptr<Peer> peer) : m_peer(std::move(peer)) { }

UIViewController::~UIViewController() = default;

UIView& UIViewController::view()
{
    if (!m_view) {
        m_view = m_peer->loadView();
        viewDidLoad();
    }
    return *m_view;
}

std::shared_ptr<UINavigationController> UIViewController::navigationController() const
{
    return m_peer->navigationController();
}

void UIViewController::setModalPresentationStyle(UIModalPresentationStyle style)
{
    m_peer->setModalPresentationStyle(style);
}

void UIViewController::present(std::shared_ptr<UIViewController> presented, Animated animated)
{
    m_peer->present(std::move(presented), animated);
}

void UIViewController::dismiss(Animated animated)
{
    m_peer->dismiss(animated);
}

}
