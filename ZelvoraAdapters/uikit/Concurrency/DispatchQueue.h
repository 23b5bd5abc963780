#pragma once

#include "ZelvoraPlatform/Concurrency/DispatchQueue.h"

#import <dispatch/dispatch.h>

namespace zelvora::uikit {

/// One of the system's queues, which never end. Each block runs in an autorelease pool of its own.
class DispatchQueue final : public platform::DispatchQueue {
public:
    explicit DispatchQueue(dispatch_queue_t queue) : m_queue(queue) { }

    // platform::DispatchQueue
    void async(Work work) override;
    void asyncAfter(platform::TimeInterval delay, Work work) override;

private:
    dispatch_queue_t m_queue;
};

}
