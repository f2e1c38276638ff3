// What LibRaw alone takes for a raw picture: the peer of `benchmark_picture`.
//
//     benchmark_libraw preview|half ROUNDS FILE…
#include <libraw/libraw.h>

#include <cstdlib>
#include <memory>
#include <string_view>

namespace {

bool isPreviewUnpacked(const char* path) {
    const auto library = std::make_unique<LibRaw>();
    return library->open_file(path) == LIBRAW_SUCCESS && library->unpack_thumb() == LIBRAW_SUCCESS;
}

bool isHalfDeveloped(const char* path) {
    const auto library = std::make_unique<LibRaw>();
    library->imgdata.params.half_size = 1;
    library->imgdata.params.use_camera_wb = 1;
    return library->open_file(path) == LIBRAW_SUCCESS && library->unpack() == LIBRAW_SUCCESS &&
           library->dcraw_process() == LIBRAW_SUCCESS;
}

} // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount < 4) {
        return 2;
    }
    const auto isDone = std::string_view(arguments[1]) == "preview" ? isPreviewUnpacked : isHalfDeveloped;
    for (long round = std::strtol(arguments[2], nullptr, 10); round > 0; --round) {
        for (int file = 3; file < argumentCount; ++file) {
            if (!isDone(arguments[file])) {
                return 1;
            }
        }
    }
    return 0;
}
