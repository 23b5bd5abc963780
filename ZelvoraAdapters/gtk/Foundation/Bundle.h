#pragma once

#include "ZelvoraPlatform/Foundation/Bundle.h"

namespace zelvora::gtk {

/// The application id by which the desktop knows the app.
class Bundle final : public platform::Bundle {
public:
    /// An application without an id is a bundle without an identifier. The id names folders: what is none, such as
    /// "../other", is a programming error that stops the process.
    explicit Bundle(std::optional<std::string> applicationId);

    // platform::Bundle
    [[nodiscard]] std::optional<std::string> bundleIdentifier() const override;

private:
    std::optional<std::string> m_applicationId;
};

}
