#include "ZelvoraAdapters/memory/WebKit/UserContentController.h"

#include "ZelvoraAdapters/memory/WebKit/CallRecord.h"
#include "ZelvoraPlatform/fatalError.h"

#include <utility>

namespace zelvora::memory {

UserContentController::~UserContentController()
{
    m_calls.forget(this);
}

platform::WKScriptMessageHandler* UserContentController::handler(std::string const& name) const
{
    auto const found = m_handlers.find(name);
    return found == m_handlers.end() ? nullptr : found->second;
}

void UserContentController::addScriptMessageHandler(platform::WKScriptMessageHandler& handler, std::string const& name)
{
    m_calls.add(this, "addScriptMessageHandler " + name);
    if (!m_handlers.emplace(name, &handler).second)
        platform::fatalError("a script message handler was added under a name that has one");
}

void UserContentController::removeScriptMessageHandler(std::string const& name)
{
    m_calls.add(this, "removeScriptMessageHandler " + name);
    m_handlers.erase(name);
}

void UserContentController::addUserScript(platform::WKUserScript script)
{
    m_calls.add(this, "addUserScript");
    m_userScripts.push_back(std::move(script));
}

}
