#pragma once

#include "ZelvoraAdapters/skeleton/missing.h"
#include "ZelvoraPlatform/WebKit/WKUserContentController.h"

#include <string>

namespace zelvora::skeleton {

class UserContentController final : public platform::WKUserContentController {
public:
    // platform::WKUserContentController
    void addScriptMessageHandler(platform::WKScriptMessageHandler&, std::string const&) override
    {
        missing("UserContentController::addScriptMessageHandler");
    }
    void removeScriptMessageHandler(std::string const&) override
    {
        missing("UserContentController::removeScriptMessageHandler");
    }
    void addUserScript(platform::WKUserScript) override { missing("UserContentController::addUserScript"); }
};

}
