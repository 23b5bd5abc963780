#pragma once

#include "ZelvoraContract/support/Record.h"
#include "ZelvoraPlatform/UIKit/UINavigationController.h"
#include "ZelvoraPlatform/UIKit/UIViewController.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace zelvora::tests {

/// A screen that records its events under its name: "shop did load in a stack", "shop will disappear, animated".
class RecordingScreen : public platform::UIViewController {
public:
    RecordingScreen(std::string name, Record<std::string>& record) : m_name(std::move(name)), m_record(record) { }

    // platform::UIViewController
    void viewDidLoad() override
    {
        UIViewController::viewDidLoad();
        m_record.add(m_name + " did load" + (navigationController() ? " in a stack" : ""));
    }
    void viewWillDisappear(platform::Animated animated) override
    {
        UIViewController::viewWillDisappear(animated);
        m_record.add(m_name + " will disappear" + (animated == platform::Animated::Yes ? ", animated" : ""));
        if (auto const act = std::exchange(actOnDisappearance, nullptr))
            act();
    }

    /// Called once, when the screen is told that it will disappear.
    std::function<void()> actOnDisappearance;

private:
    std::string m_name;
    Record<std::string>& m_record;
};

}
