#pragma once

#include "ZelvoraPlatform/Foundation/Bundle.h"

#include <optional>
#include <string>
#include <utility>

namespace zelvora::abacus {

class Bundle final : public platform::Bundle {
public:
    /// Absent if the app has none.
    explicit Bundle(std::optional<std::string> identifier = "com.example.abacus") : m_identifier(std::move(identifier))
    {
    }

    // platform::Bundle
    [[nodiscard]] std::optional<std::string> bundleIdentifier() const override { return m_identifier; }

private:
    std::optional<std::string> m_identifier;
};

}
