#include "ZelvoraAdapters/memory/UIKit/ViewController.h"

namespace zelvora::memory {

void ViewController::viewWillDisappear(platform::Animated animated)
{
    platform::UIViewController::viewWillDisappear(animated);
    m_disappearances.push_back(animated);
}

}
