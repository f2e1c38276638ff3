#include "host/RenderViews.h"

#include "host/ChoiceSheet.h"
#include "host/ConversationFeed.h"
#include "host/ExtensionPanel.h"
#include "host/HeaderBar.h"
#include "host/HostAppearance.h"
#include "host/HostExtension.h"
#include "host/InputBar.h"
#include "host/LibraryAccess.h"
#include "host/MessagesWindow.h"
#include "host/RenderCells.h"
#include "host/RenderPanels.h"
#include "host/Settling.h"
#include "platform/foundation/NotificationCenter.h"
#include "platform/uikit/UITraitCollection.h"
#include "screens/ListScreenRequests.h"

#include <algorithm>
#include <array>

namespace exifcard {
namespace {

constexpr QSize kPhoneSize(375, 812);
constexpr QSize kTabletSize(768, 1000);

std::unique_ptr<QWidget> makeHost(RenderContext& context) {
    return context.makeWindow(/*fillsConversation=*/true);
}

std::unique_ptr<QWidget> makeExpanded(RenderContext& context) {
    auto window = context.makeWindow(/*fillsConversation=*/true);
    if (window) {
        window->panel().setStyle(ExtensionPanel::Style::Expanded, /*isAnimated=*/false);
    }
    return window;
}

std::unique_ptr<QWidget> makeConversations(RenderContext& context) {
    auto window = context.makeWindow(/*fillsConversation=*/true);
    if (window) {
        emit window->findChild<HeaderBar*>()->conversationsRequested();
    }
    return window;
}

std::unique_ptr<QWidget> makeEmpty(RenderContext& context) {
    return context.makeWindow(/*fillsConversation=*/false);
}

std::unique_ptr<QWidget> makeFirstStart(RenderContext& context) {
    auto window = context.makeWindow(/*fillsConversation=*/false);
    if (window) {
        NotificationCenter::defaultCenter().postNotificationName(kAddPhotosRequestedNotification, nullptr);
    }
    return window;
}

std::unique_ptr<QWidget> makeAccess(RenderContext& context) {
    auto window = context.makeWindow(/*fillsConversation=*/false);
    if (window) {
        NotificationCenter::defaultCenter().postNotificationName(
            kLibraryAccessRequestedNotification, nullptr);
    }
    return window;
}

std::unique_ptr<QWidget> makeFailure(RenderContext& context) {
    auto window = context.makeWindow(/*fillsConversation=*/true);
    if (window) {
        window->inputBar().showFailedInsertion(
            {.error = "The disk is full", .message = MSMessage{}, .text = ""});
    }
    return window;
}

constexpr std::array kViews = {
    RenderView{"host", "The whole window, with a conversation of the files", true, makeHost},
    RenderView{"expanded", "The window with the panel over the conversation", true, makeExpanded},
    RenderView{"compact", "The compact panel over the files", true, makeCompact},
    RenderView{"conversations", "The list of conversations over the window", true, makeConversations},
    RenderView{"denied", "The compact panel where photos may not be read", false, makeDenied},
    RenderView{"filtered", "The compact panel where the settings hide every photo", false, makeFiltered},
    RenderView{"album", "An album of the files, or an empty one", false, makeAlbum},
    RenderView{"tile", "The files as details tiles", true, makeTiles},
    RenderView{"marks", "The files as tiles with the marks that there are", true, makeMarkedTiles},
    RenderView{"loading", "The last item of a list that has more to come", false, makeLoadingCell},
    RenderView{"overlay", "The overlay that tells of progress", false, makeOverlay},
    RenderView{"empty", "The window without a message; without files also without photos", false, makeEmpty},
    RenderView{"first-start", "The question where the photos are", false, makeFirstStart},
    RenderView{"access", "The question whether photos may be read", false, makeAccess},
    RenderView{"failure", "The window after a photo could not be added", true, makeFailure},
};

} // namespace

RenderContext::RenderContext(RenderRequest request) : _request(std::move(request)) {
}

RenderContext::~RenderContext() = default;

QSize RenderContext::windowSize() const {
    return _request.isTablet ? kTabletSize : kPhoneSize;
}

std::unique_ptr<MessagesWindow> RenderContext::makeWindow(bool fillsConversation) {
    const std::string name = "Maja Lindqvist";
    _error = _library.import(_request.files);
    if (_error.empty() && fillsConversation) {
        _error = _library.fillConversation(name, _request.files);
    }
    if (!_error.empty()) {
        return nullptr;
    }
    const UIUserInterfaceStyle style = UITraitCollection::currentTraitCollection().userInterfaceStyle;
    _appearance = std::make_unique<HostAppearance>(style, style);
    auto window = std::make_unique<MessagesWindow>(makeExtension(), WindowState(), *_appearance);
    window->resize(windowSize());
    window->openConversation(name);
    waitUntil(
        [&window, fillsConversation] { return !fillsConversation || !window->feed().pending().empty(); });
    window->setAttribute(Qt::WA_DontShowOnScreen);
    window->show(); // As in a session: a list that is not visible does not scroll back.
    window->activateExtension();
    return window;
}

std::span<const RenderView> renderViews() {
    return kViews;
}

const RenderView* renderViewNamed(std::string_view name) {
    const auto found = std::ranges::find(kViews, name, &RenderView::name);
    return found == kViews.end() ? nullptr : &*found;
}

} // namespace exifcard
