#include "ZelvoraAdapters/memory/Tracking/ATTrackingManager.h"

#include "ZelvoraPlatform/Concurrency/DispatchQueue.h"
#include "ZelvoraPlatform/fatalError.h"

#include <utility>

namespace zelvora::memory {

ATTrackingManager::~ATTrackingManager()
{
    for (auto& completion : std::exchange(m_prompted, {}))
        completion(m_status);
    while (!m_answered.empty())
        deliverOne();
}

void ATTrackingManager::answer(Status status)
{
    if (m_prompted.empty())
        platform::fatalError("the tracking prompt was answered while it was not shown");
    m_status = status;
    for (auto& completion : std::exchange(m_prompted, {}))
        deliverLater(std::move(completion));
}

void ATTrackingManager::requestTrackingAuthorization(Completion completion)
{
    ++m_requestCount;
    if (m_status == Status::NotDetermined)
        m_prompted.push_back(std::move(completion));
    else
        deliverLater(std::move(completion));
}

void ATTrackingManager::deliverLater(Completion completion)
{
    {
        std::scoped_lock const lock(m_mutex);
        m_answered.push_back({ std::move(completion), m_status });
    }
    m_completionQueue.async([this] { deliverOne(); });
}

void ATTrackingManager::deliverOne()
{
    std::unique_lock lock(m_mutex);
    auto answered = std::move(m_answered.front());
    m_answered.pop_front();
    lock.unlock();
    answered.completion(answered.status);
}

}
