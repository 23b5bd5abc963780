#pragma once

#include "ZelvoraPlatform/WebKit/WKUserContentController.h"

#import <WebKit/WebKit.h>

namespace zelvora::uikit {

/// The system's content controller. It keeps the handlers that it is given, so it is given small ones, which know the
/// SDK's until those are removed.
class UserContentController final : public platform::WKUserContentController {
public:
    explicit UserContentController(::WKUserContentController* native);
    UserContentController(UserContentController const&) = delete;
    UserContentController& operator=(UserContentController const&) = delete;
    ~UserContentController() override;

    [[nodiscard]] ::WKUserContentController* native() const { return m_native; }

    // platform::WKUserContentController
    void addScriptMessageHandler(platform::WKScriptMessageHandler& handler, std::string const& name) override;
    void removeScriptMessageHandler(std::string const& name) override;
    void addUserScript(platform::WKUserScript script) override;

private:
    ::WKUserContentController* m_native;
    // By name.
    NSMutableDictionary* m_handlers;
};

}
