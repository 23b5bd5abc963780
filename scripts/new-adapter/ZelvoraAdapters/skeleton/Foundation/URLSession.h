#pragma once

#include "ZelvoraAdapters/skeleton/missing.h"
#include "ZelvoraPlatform/Foundation/URLSession.h"

namespace zelvora::skeleton {

class URLSession final : public platform::URLSession {
public:
    // platform::URLSession
    void dataTask(platform::URLRequest, Completion) override { missing("URLSession::dataTask"); }
};

}
