#pragma once

namespace zelvora::internal {

/// Has the platform complain if this is not the main thread, on which hosts have to call `function`, a member of
/// `ZelvoraSDK`. Any thread.
void expectMainThread(char const* function);

}
