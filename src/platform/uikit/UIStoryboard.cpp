#include "platform/uikit/UIStoryboard.h"

#include <map>
#include <utility>

namespace exifcard {
namespace {

using SceneName = std::pair<std::string, std::string>;

std::map<SceneName, UIStoryboard::SceneFactory>& registeredScenes() {
    static std::map<SceneName, UIStoryboard::SceneFactory> scenes;
    return scenes;
}

} // namespace

void UIStoryboard::registerScene(
    std::string_view storyboard, std::string_view identifier, SceneFactory factory) {
    SceneName name(storyboard, identifier);
    if (factory) {
        registeredScenes().insert_or_assign(std::move(name), std::move(factory));
    } else {
        registeredScenes().erase(name);
    }
}

UIStoryboard UIStoryboard::storyboardWithName(std::string_view name) {
    return UIStoryboard(std::string(name));
}

std::shared_ptr<UIViewController> UIStoryboard::instantiateViewControllerWithIdentifier(
    std::string_view identifier) const {
    const auto found = registeredScenes().find(SceneName(_name, identifier));
    return found == registeredScenes().end() ? nullptr : found->second();
}

} // namespace exifcard
