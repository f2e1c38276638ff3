// Reads the metadata of every file named on standard input with Exiv2 alone: the peer of `exifcard rows`.
#include <exiv2/exiv2.hpp>

#include <cstdio>
#include <iostream>
#include <string>

int main() {
    Exiv2::LogMsg::setLevel(Exiv2::LogMsg::mute);
    Exiv2::XmpParser::initialize();
    std::size_t entries = 0;
    std::size_t files = 0;
    for (std::string path; std::getline(std::cin, path); ++files) {
        try {
            const auto image = Exiv2::ImageFactory::open(path);
            image->readMetadata();
            entries += static_cast<std::size_t>(image->exifData().count());
        } catch (const Exiv2::AnyError& error) {
            std::fprintf(stderr, "%s: %s\n", path.c_str(), error.what());
        }
    }
    std::printf("%zu files, %zu entries\n", files, entries);
    return 0;
}
