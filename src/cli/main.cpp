#include "cli/CommandLine.h"

int main(int argumentCount, char** arguments) {
    return static_cast<int>(exifcard::runCommandLine(argumentCount, arguments));
}
