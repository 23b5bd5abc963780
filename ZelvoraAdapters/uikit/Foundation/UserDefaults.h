#pragma once

#include "ZelvoraPlatform/Foundation/UserDefaults.h"

#import <Foundation/Foundation.h>

#include <mutex>

namespace zelvora::uikit {

/// The app's standard preferences, which the system shares with the host. They cannot hold a null marker, so one inside
/// a container is stored as a reserved dictionary. A value that the preferences do not accept is not written.
class UserDefaults final : public platform::UserDefaults {
public:
    UserDefaults();

    // platform::UserDefaults
    [[nodiscard]] std::optional<platform::Value> object(std::string const& key) override;
    void setObject(std::optional<platform::Value> value, std::string const& key) override;
    void setDouble(double number, std::string const& key) override;
    void removeObject(std::string const& key) override;

private:
    NSUserDefaults* m_defaults;
    // So that no reader sees a value being removed before it is replaced.
    std::mutex m_mutex;
};

}
