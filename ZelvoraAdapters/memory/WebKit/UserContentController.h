#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/WebKit/WKUserContentController.h"

#include <map>
#include <string>
#include <vector>

namespace zelvora::memory {

class CallRecord;

/// The scripts that are injected into pages, and the handlers of what pages post. Its calls are in the screen's record:
/// "addScriptMessageHandler NAME", "removeScriptMessageHandler NAME", "addUserScript". Adding a name twice stops the
/// process. Main thread.
class ZELVORA_API UserContentController final : public platform::WKUserContentController {
public:
    /// The record, into which the calls go, must outlive the controller.
    explicit UserContentController(CallRecord& calls) : m_calls(calls) { }
    ~UserContentController() override;
    UserContentController(UserContentController const&) = delete;
    UserContentController& operator=(UserContentController const&) = delete;

    /// nullptr if there is none of this name.
    [[nodiscard]] platform::WKScriptMessageHandler* handler(std::string const& name) const;
    /// The scripts in the order in which they were added.
    [[nodiscard]] std::vector<platform::WKUserScript> const& userScripts() const { return m_userScripts; }

    // platform::WKUserContentController
    void addScriptMessageHandler(platform::WKScriptMessageHandler& handler, std::string const& name) override;
    void removeScriptMessageHandler(std::string const& name) override;
    void addUserScript(platform::WKUserScript script) override;

private:
    CallRecord& m_calls;
    // Not owned: each removes itself before it is destroyed.
    std::map<std::string, platform::WKScriptMessageHandler*> m_handlers;
    std::vector<platform::WKUserScript> m_userScripts;
};

}
