#pragma once

// Everything that an Objective-C host needs: `@import ZelvoraIOS;` or `#import <ZelvoraIOS/ZelvoraIOS.h>`.

#import "ZelvoraExport.h"
#import "ZelvoraIOSVersion.h"
#import "ZelvoraIOSViewController.h"
#import "ZelvoraJavascriptInterface.h"
#import "ZelvoraLogger.h"
#import "ZelvoraSDK.h"
#import "ZelvoraSDKDelegate.h"
#import "ZelvoraSDKError.h"
#import "ZelvoraStorage.h"
#import "ZelvoraWebView.h"
