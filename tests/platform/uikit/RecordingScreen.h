#pragma once

#include "platform/uikit/UIViewController.h"

#include <string>
#include <vector>

namespace exifcard {

/// Writes down its callbacks as "name callback".
class RecordingScreen : public UIViewController {
public:
    using Record = std::vector<std::string>;

    RecordingScreen(std::string name, Record& record) : _name(std::move(name)), _record(record) {}

    void viewDidLoad() override { note("viewDidLoad"); }
    void viewWillAppear(bool) override { note("viewWillAppear"); }
    void updateViewConstraints() override { note("updateViewConstraints"); }
    void viewWillLayoutSubviews() override { note("viewWillLayoutSubviews"); }
    void viewDidLayoutSubviews() override { note("viewDidLayoutSubviews"); }
    void viewDidAppear(bool) override { note("viewDidAppear"); }
    void viewWillDisappear(bool) override { note("viewWillDisappear"); }
    void viewDidDisappear(bool) override { note("viewDidDisappear"); }
    void traitCollectionDidChange(const UITraitCollection&) override { note("traitCollectionDidChange"); }
    void didReceiveMemoryWarning() override { note("didReceiveMemoryWarning"); }
    void willMoveToParentViewController(const std::shared_ptr<UIViewController>& parent) override {
        note(parent ? "willMoveToParent" : "willMoveToNoParent");
    }
    void didMoveToParentViewController(const std::shared_ptr<UIViewController>& parent) override {
        note(parent ? "didMoveToParent" : "didMoveToNoParent");
        UIViewController::didMoveToParentViewController(parent);
    }

private:
    void note(const char* callback) {
        std::string line = _name;
        line += ' ';
        line += callback;
        _record.push_back(std::move(line));
    }

    std::string _name;
    Record& _record;
};

/// Leaves out the callbacks of layout, and empties the record.
inline RecordingScreen::Record takeWithoutLayout(RecordingScreen::Record& record) {
    RecordingScreen::Record taken;
    taken.swap(record);
    std::erase_if(taken, [](const std::string& line) {
        return line.ends_with("LayoutSubviews") || line.ends_with("updateViewConstraints");
    });
    return taken;
}

} // namespace exifcard
