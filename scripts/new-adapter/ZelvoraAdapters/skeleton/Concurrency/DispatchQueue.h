#pragma once

#include "ZelvoraAdapters/skeleton/missing.h"
#include "ZelvoraPlatform/Concurrency/DispatchQueue.h"

#include <string>
#include <utility>

namespace zelvora::skeleton {

/// `ZelvoraAdapters/shared` has a concurrent one, a pool of threads.
class DispatchQueue final : public platform::DispatchQueue {
public:
    /// The name is for the message of what is missing: the main queue and the global one are written in two ways.
    explicit DispatchQueue(std::string name) : m_name(std::move(name)) { }

    // platform::DispatchQueue
    void async(Work) override { missing(m_name + "::async"); }
    void asyncAfter(platform::TimeInterval, Work) override { missing(m_name + "::asyncAfter"); }

private:
    std::string m_name;
};

}
