// All of the formatting library that is not a template, for programs that link it in.
#include <fmt/format.h>
