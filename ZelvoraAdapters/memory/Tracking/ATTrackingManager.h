#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Tracking/ATTrackingManager.h"

#include <cstddef>
#include <deque>
#include <mutex>
#include <vector>

namespace zelvora::platform {
class DispatchQueue;
}

namespace zelvora::memory {

/// Tracking permission: a prompt that the test answers. As on the phone, completions run off the main thread, on the
/// given queue; those that have not run when the manager is destroyed are called then. Main thread.
class ZELVORA_API ATTrackingManager final : public platform::ATTrackingManager {
public:
    /// Short for the type that the interface names.
    /// @{
    using Status = platform::ATTrackingAuthorizationStatus;
    using Completion = platform::CompletionHandler<void(Status)>;
    /// @}

    /// Completions run on the queue. It must not run any more when the manager has been destroyed.
    explicit ATTrackingManager(platform::DispatchQueue& completionQueue) : m_completionQueue(completionQueue) { }
    ~ATTrackingManager() override;
    ATTrackingManager(ATTrackingManager const&) = delete;
    ATTrackingManager& operator=(ATTrackingManager const&) = delete;

    /// As an earlier launch or the system's settings would leave it. A prompt that is shown stays.
    void setStatus(Status status) { m_status = status; }
    /// How many requests wait for the user; above 0 the prompt is shown.
    [[nodiscard]] std::size_t pendingRequestCount() const { return m_prompted.size(); }
    /// How many requests were made so far.
    [[nodiscard]] std::size_t requestCount() const { return m_requestCount; }
    /// The user's answer to the prompt, for every waiting request. Stops the process if no prompt is shown.
    void answer(Status status);

    // platform::ATTrackingManager
    [[nodiscard]] Status trackingAuthorizationStatus() const override { return m_status; }
    /// Shows the prompt, which stays until `answer`, if the status is not determined; otherwise the completion is
    /// called when the queue runs.
    void requestTrackingAuthorization(Completion completion) override;

private:
    struct Answered {
        Completion completion;
        Status status;
    };

    void deliverLater(Completion completion);
    void deliverOne();

    platform::DispatchQueue& m_completionQueue;
    Status m_status = Status::NotDetermined;
    std::size_t m_requestCount = 0;
    std::vector<Completion> m_prompted;
    // Guards what follows: the queue may run on another thread.
    std::mutex m_mutex;
    std::deque<Answered> m_answered;
};

}
