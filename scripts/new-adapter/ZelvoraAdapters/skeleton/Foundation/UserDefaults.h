#pragma once

#include "ZelvoraAdapters/skeleton/missing.h"
#include "ZelvoraPlatform/Foundation/UserDefaults.h"

#include <optional>
#include <string>

namespace zelvora::skeleton {

/// `ZelvoraAdapters/shared` has a journal in a file, `JournaledUserDefaults`, for a platform without a store of its
/// own.
class UserDefaults final : public platform::UserDefaults {
public:
    // platform::UserDefaults
    [[nodiscard]] std::optional<platform::Value> object(std::string const&) override
    {
        missing("UserDefaults::object");
    }
    void setObject(std::optional<platform::Value>, std::string const&) override { missing("UserDefaults::setObject"); }
    void setDouble(double, std::string const&) override { missing("UserDefaults::setDouble"); }
    void removeObject(std::string const&) override { missing("UserDefaults::removeObject"); }
};

}
