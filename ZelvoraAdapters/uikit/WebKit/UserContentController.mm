#include "ZelvoraAdapters/uikit/WebKit/UserContentController.h"

#include "ZelvoraAdapters/uikit/Foundation/Values.h"
#include "ZelvoraPlatform/fatalError.h"

#include <utility>

/// Passes a page's messages on to a handler of the SDK's.
@interface ZLVScriptMessageHandler : NSObject <WKScriptMessageHandler> {
@public
    // Reset when the handler is removed.
    zelvora::platform::WKScriptMessageHandler* _handler;
}
@end

@implementation ZLVScriptMessageHandler

- (void)userContentController:(WKUserContentController*)userContentController
      didReceiveScriptMessage:(WKScriptMessage*)message
{
    auto body = _handler ? zelvora::uikit::valueOf(message.body) : std::nullopt;
    if (body)
        _handler->didReceiveScriptMessage({ zelvora::uikit::textOf(message.name), *std::move(body) });
}

@end

namespace zelvora::uikit {

UserContentController::UserContentController(::WKUserContentController* native)
    : m_native(native)
    , m_handlers([NSMutableDictionary dictionaryWithCapacity:1])
{
}

UserContentController::~UserContentController()
{
    for (NSString* name in m_handlers) {
        static_cast<ZLVScriptMessageHandler*>([m_handlers objectForKey:name])->_handler = nullptr;
        [m_native removeScriptMessageHandlerForName:name];
    }
}

void UserContentController::addScriptMessageHandler(platform::WKScriptMessageHandler& handler, std::string const& name)
{
    NSString* key = stringOf(name);
    if ([m_handlers objectForKey:key])
        platform::fatalError("a script message handler of this name was added already");
    ZLVScriptMessageHandler* native = [[ZLVScriptMessageHandler alloc] init];
    native->_handler = &handler;
    [m_handlers setObject:native forKey:key];
    [m_native addScriptMessageHandler:native name:key];
}

void UserContentController::removeScriptMessageHandler(std::string const& name)
{
    NSString* key = stringOf(name);
    ZLVScriptMessageHandler* native = [m_handlers objectForKey:key];
    if (!native)
        return;
    // The system may be about to deliver what was posted before.
    native->_handler = nullptr;
    [m_handlers removeObjectForKey:key];
    [m_native removeScriptMessageHandlerForName:key];
}

void UserContentController::addUserScript(platform::WKUserScript script)
{
    NSString* source = stringOf(script.source);
    if (!source)
        return;
    auto const time = static_cast<WKUserScriptInjectionTime>(script.injectionTime);
    [m_native addUserScript:[[::WKUserScript alloc] initWithSource:source
                                                     injectionTime:time
                                                  forMainFrameOnly:script.forMainFrameOnly]];
}

}
