// Reads a configuration file as its author sees it. It finds everything that looks like an entry or a
// section, also where the library takes it for something else or for nothing. It serves only explanations:
// ConfigurationText says what counts.
#pragma once

#include <string_view>
#include <vector>

namespace ckscribe {

enum class SectionStyle {
    kBraces,    // Name = {
    kNoEquals,  // Name {
    kBrackets,  // [Name]
    kTag,       // <Name>
};

// Texts point into the text that was given; places are offsets into it.
struct WrittenSection {
    std::string_view name;
    std::size_t place;  // of the name
    SectionStyle style;
    std::size_t end;  // of what belongs to it
};

struct WrittenEntry {
    std::string_view name;
    std::size_t place;         // of the name
    std::string_view between;  // what stands between the name and the sign
    char sign;                 // '=', ':' or ' '
    // `value` reaches to the ";", or to the end of the section or of the line. It has no blanks around it.
    std::string_view value;
    int section;          // index of the section that it stands in, or -1
    bool isCommentedOut;  // its line begins with "#", ";", "!" or "//"
};

struct WrittenFile {
    std::vector<WrittenSection> sections;
    std::vector<WrittenEntry> entries;
};

WrittenFile ReadAsWritten(std::string_view text);

}  // namespace ckscribe
