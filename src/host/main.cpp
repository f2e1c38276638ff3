#include "host/MessagesProgram.h"

int main(int argumentCount, char** arguments) {
    return exifcard::runMessages(argumentCount, arguments);
}
