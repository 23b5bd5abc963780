#pragma once

#import <AdSupport/AdSupport.h>
#import <AppTrackingTransparency/AppTrackingTransparency.h>

#include <string>

// The permission to track, with a user who answers when told to, and the advertising identifier. Any thread.
namespace zelvora::doubles {

void setTrackingStatus(ATTrackingManagerAuthorizationStatus status);
/// Whether the question is on the screen.
[[nodiscard]] bool isAskingToTrack();
/// Answers the question; its completions are called on a background thread.
void answerTracking(bool allow);
/// An upper-case UUID; all zeros at first.
void setAdvertisingIdentifier(std::string const& identifier);

}
