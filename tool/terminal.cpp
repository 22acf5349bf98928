#include "tool/terminal.h"

#include <unistd.h>

#include <cstdlib>

namespace ckscribe {

bool MayColour(int descriptor) {
    const char* const noColour = std::getenv("NO_COLOR");
    return (noColour == nullptr || *noColour == '\0') && isatty(descriptor) == 1;
}

std::string Palette::In(std::string_view code, std::string_view text) const {
    if (!isColoured_) return std::string(text);
    return "\033[" + std::string(code) + "m" + std::string(text) + "\033[0m";
}

}  // namespace ckscribe
