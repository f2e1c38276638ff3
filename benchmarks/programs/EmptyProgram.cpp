// Starts and ends, with the libraries linked that reading one photo needs: the floor for a start of the command line.
#include <exiv2/exiv2.hpp>
#include <unicode/uversion.h>

int main(int argumentCount, char** /*arguments*/) {
    if (argumentCount > 1'000) { // Never: keeps both libraries linked.
        UVersionInfo version;
        u_getVersion(version);
        return static_cast<int>(Exiv2::versionNumber());
    }
    return 0;
}
