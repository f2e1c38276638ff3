// Names the place at one coordinate, or without arguments nothing: what a first question costs a whole
// process.
//
//     benchmark_place [LATITUDE LONGITUDE]
#include "platform/corelocation/CLGeocoder.h"

#include <cstdio>
#include <cstdlib>

int main(int argumentCount, char** arguments) {
    if (argumentCount < 3) {
        return 0;
    }
    const auto answer =
        exifcard::placeAtCoordinate({std::strtod(arguments[1], nullptr), std::strtod(arguments[2], nullptr)});
    if (!answer.placemark) {
        return 1;
    }
    std::printf("%s, %s\n", answer.placemark->locality.value_or("").c_str(),
        answer.placemark->country.value_or("").c_str());
    return 0;
}
