#pragma once

// What `@autoreleasepool` calls.
extern "C" void* objc_autoreleasePoolPush(void);
extern "C" void objc_autoreleasePoolPop(void* pool);

namespace zelvora::tests {

/// A pool for whoever plays the main loop of a phone, which drains one in each turn.
class AutoreleasePool final {
public:
    AutoreleasePool() = default;
    AutoreleasePool(AutoreleasePool const&) = delete;
    AutoreleasePool& operator=(AutoreleasePool const&) = delete;
    ~AutoreleasePool() { objc_autoreleasePoolPop(m_pool); }

    void drain()
    {
        objc_autoreleasePoolPop(m_pool);
        m_pool = objc_autoreleasePoolPush();
    }

private:
    void* m_pool = objc_autoreleasePoolPush();
};

}
