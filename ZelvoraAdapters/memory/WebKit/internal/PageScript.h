#pragma once

#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "ZelvoraPlatform/Foundation/JSONSerialization.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zelvora::memory {

/// What a page can post by the functions of the script that its web view was given, as that script's text has it.
class PageScript final {
public:
    /// `source` is the text of the page's script, `json` reads the names in it.
    PageScript(std::string_view source, platform::JSONSerialization const& json);

    /// Why no function of the page posts this message, in a sentence; absent if one may.
    [[nodiscard]] std::optional<std::string> objection(
        std::string const& action, platform::Dictionary const& arguments) const;

private:
    using Names = std::vector<std::string>;

    void readMessage(std::string_view members);
    [[nodiscard]] std::optional<std::string> objectionToCustomAction(platform::Dictionary const& arguments) const;

    /// The keys of each action.
    std::map<std::string, Names, std::less<>> m_actions;
    /// The actions of the app's that the page has functions for.
    Names m_customActions;
};

}
