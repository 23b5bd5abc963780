#pragma once

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"
#include "ZelvoraPlatform/Tracking/ATTrackingManager.h"

#include <gtk/gtk.h>

#include <string>
#include <vector>

namespace zelvora::gtk {

class TrackingStore;

/// Asks with a dialog over the app's active window, in Korean or English depending on the user's language. Closing the
/// dialog is no answer: the status stays not determined, and the user is asked again next time. Main thread.
class ATTrackingManager final : public platform::ATTrackingManager {
public:
    /// The store outlives the manager.
    ATTrackingManager(TrackingStore& store, std::string appName);
    ATTrackingManager(ATTrackingManager const&) = delete;
    ATTrackingManager& operator=(ATTrackingManager const&) = delete;
    /// Completes pending requests with the current status.
    ~ATTrackingManager() override;

    // platform::ATTrackingManager
    [[nodiscard]] platform::ATTrackingAuthorizationStatus trackingAuthorizationStatus() const override;
    void requestTrackingAuthorization(
        platform::CompletionHandler<void(platform::ATTrackingAuthorizationStatus)> completion) override;

private:
    using Completion = platform::CompletionHandler<void(platform::ATTrackingAuthorizationStatus)>;

    void showDialog();
    void didRespond(int response);
    void complete();

    TrackingStore& m_store;
    std::string m_appName;
    GtkWindow* m_dialog = nullptr;
    std::vector<Completion> m_completions;
};

}
