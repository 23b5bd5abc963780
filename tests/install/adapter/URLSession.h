#pragma once

#include "ZelvoraPlatform/Foundation/URLSession.h"

#include <mutex>
#include <utility>
#include <vector>

namespace zelvora::abacus {

/// A network on which no server answers.
class URLSession final : public platform::URLSession {
public:
    // platform::URLSession
    void dataTask(platform::URLRequest, Completion completion) override
    {
        std::scoped_lock const lock(m_mutex);
        m_pending.push_back(std::move(completion));
    }

private:
    std::mutex m_mutex;
    std::vector<Completion> m_pending;
};

}
