#include "ZelvoraAdapters/memory/UIKit/UIApplication.h"

#include "ZelvoraPlatform/Foundation/NotificationCenter.h"

#include <algorithm>
#include <cctype>
#include <utility>

namespace zelvora::memory {

void UIApplication::setApplicationState(platform::UIApplicationState state)
{
    auto const former = std::exchange(m_state, state);
    if (state == platform::UIApplicationState::Active && former != state)
        m_notificationCenter.post({ didBecomeActiveNotification, std::nullopt });
}

bool UIApplication::canOpenURL(platform::URL const& url) const
{
    m_askedURLs.push_back(url);
    auto scheme = url.scheme().value_or("");
    std::ranges::transform(scheme, scheme.begin(),
        [](char letter) { return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter; });
    return m_openableSchemes.contains(scheme);
}

void UIApplication::open(platform::URL const& url)
{
    m_openedURLs.push_back(url);
}

}
