#pragma once

#include "ZelvoraAdapters/memory/ForwardingPlatform.h"
#include "ZelvoraAdapters/memory/Platform.h"
#include "ZelvoraAdapters/shared/Journal/JournaledUserDefaults.h"

#include <memory>
#include <string>

namespace zelvora::bench {

/// The platform in memory with the real preferences, so that only storage is measured.
class JournalPlatform : public memory::ForwardingPlatform {
public:
    /// Keeps the preferences in the file at `path`.
    explicit JournalPlatform(std::string const& path);

    [[nodiscard]] memory::Platform& memory() { return static_cast<memory::Platform&>(target()); }

    // platform::Platform
    [[nodiscard]] platform::UserDefaults& standardUserDefaults() override { return m_userDefaults; }
    [[nodiscard]] std::unique_ptr<platform::Logger> makeLogger(
        std::string const& subsystem, std::string const& category) override;

private:
    shared::JournaledUserDefaults m_userDefaults;
};

}
