#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace exifcard {

class UIViewController;

/// The scenes that can be made by name. Whoever owns a scene registers it before it is asked for.
class UIStoryboard {
public:
    using SceneFactory = std::function<std::shared_ptr<UIViewController>()>;

    /// Replaces a scene of the same names; an empty factory removes it.
    static void registerScene(std::string_view storyboard, std::string_view identifier, SceneFactory factory);

    static UIStoryboard storyboardWithName(std::string_view name);
    /// A new screen; null for a scene that nobody registered.
    std::shared_ptr<UIViewController> instantiateViewControllerWithIdentifier(
        std::string_view identifier) const;

private:
    explicit UIStoryboard(std::string name) : _name(std::move(name)) {}

    std::string _name;
};

} // namespace exifcard
