#pragma once

#import <UIKit/UIKit.h>

/// The screen of the doubles has 390 by 844 points, of which the safe area leaves out 47 at the top and 34 at the
/// bottom.
namespace zelvora::doubles {

inline constexpr CGFloat screenWidth = 390;
inline constexpr CGFloat screenHeight = 844;
inline constexpr CGFloat safeTop = 47;
inline constexpr CGFloat safeBottom = 34;

/// Ends the animated transitions that have begun. Each new transition does so first.
void finishTransitions();

}

@interface UIView (Doubles)
/// A finger that drags from the view's left edge across it: asks the recognizers of the view, and of the views that it
/// is in, as the system does, and calls those that may begin. Returns how many began.
- (NSUInteger)doubleDragFromLeftEdge;
@end
