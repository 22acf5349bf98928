// Decides whether text for a stream is coloured, and colours it.
#pragma once

#include <string>
#include <string_view>

namespace ckscribe {

// Returns whether text for this descriptor may be coloured: the descriptor is a terminal, and the environment
// variable NO_COLOR is absent or empty.
bool MayColour(int descriptor);

// Colours text, or returns it unchanged. It is a value; any thread may use it.
class Palette {
public:
    explicit Palette(bool isColoured) : isColoured_(isColoured) {}
    // Returns the palette for text that is written to this descriptor.
    static Palette For(int descriptor) { return Palette(MayColour(descriptor)); }

    std::string Good(std::string_view text) const { return In("32", text); }     // green
    std::string Bad(std::string_view text) const { return In("31", text); }      // red
    std::string Notable(std::string_view text) const { return In("33", text); }  // yellow
    std::string Name(std::string_view text) const { return In("1", text); }      // bold
    std::string Quiet(std::string_view text) const { return In("2", text); }     // faint

private:
    std::string In(std::string_view code, std::string_view text) const;

    bool isColoured_;
};

}  // namespace ckscribe
