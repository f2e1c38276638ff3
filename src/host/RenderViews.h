#pragma once

#include "host/SampleLibrary.h"

#include <QWidget>

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace exifcard {

class HostAppearance;
class MessagesWindow;

/// What is to be drawn.
struct RenderRequest {
    std::vector<std::string> files; ///< Absolute.
    bool isTablet = false;
};

/// What a view is made from, and what it needs while it is drawn.
class RenderContext {
public:
    explicit RenderContext(RenderRequest request);
    ~RenderContext();

    const RenderRequest& request() const { return _request; }
    QSize windowSize() const;
    SampleLibrary& library() { return _library; }
    /// The whole window, over a library of the files.
    /// @return Null where that fails.
    std::unique_ptr<MessagesWindow> makeWindow(bool fillsConversation);

    /// Why a view could not be made: one sentence.
    const std::string& error() const { return _error; }
    void setError(std::string error) { _error = std::move(error); }
    /// Until everything is drawn.
    void keep(std::shared_ptr<void> screen) { _kept = std::move(screen); }

private:
    RenderRequest _request;
    SampleLibrary _library;
    std::unique_ptr<HostAppearance> _appearance;
    std::string _error;
    std::shared_ptr<void> _kept;
};

/// A view that can be drawn by its name.
struct RenderView {
    std::string_view name;
    std::string_view summary;
    bool needsFiles = true;
    /// @return Null where the context tells an error.
    std::unique_ptr<QWidget> (*make)(RenderContext& context) = nullptr;
};

std::span<const RenderView> renderViews();
/// Null for an unknown name.
const RenderView* renderViewNamed(std::string_view name);

} // namespace exifcard
