// Edits virtual tokens: changes their lists of members, and takes a token out of its section.

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "config/file_rewrite.h"
#include "config/growing_text.h"
#include "config/wendrafil_configuration.h"

namespace {

constexpr int kTokens = 100;

// A token keeps these entries, in this order, when its section is rebuilt.
constexpr struct {
    const char* pattern;
    int size;
} kTokenEntries[] = {
    {"VirtualToken%02dLabel", 63},
    {"VirtualToken%02dSN", 63},
    {"VirtualToken%02dMembers", 839},
    {"VirtualToken%02dSessionSynchsDisabled", 839},
    {"VirtualToken%02dTokenSynchsDisabled", 839},
};

// Appends each entry of the token as a line of its own. Returns the number of entries.
int AppendToken(const WendrafilConfiguration& store, const char* section, int index,
                ckscribe::GrowingText* lines) {
    int count = 0;
    for (const auto& entry : kTokenEntries) {
        const ckscribe::NumberedName key(entry.pattern, index);
        char value[839];
        if (!store.GetConfigurationInfo(section, key, value, entry.size)) continue;
        char line[1000];
        std::snprintf(line, sizeof line, "   %s = %s;", static_cast<const char*>(key), value);
        lines->Append(std::string_view(line).substr(0, ckscribe::FileRewrite::kLineLimit));
        lines->Append("\n");
        ++count;
    }
    return count;
}

// Replaces the section's lines by `lines`. Returns false if no line begins the section.
// ReplaceConfigurationInfo would not do: it breaks its body after every 512 characters, in the middle of an
// entry.
bool ReplaceLines(const char* section, std::string_view lines, ckscribe::FileRewrite* file) {
    bool isInside = false;
    bool hasSection = false;
    for (std::string_view line; file->NextLine(&line);) {
        if (!isInside) {
            file->WriteLine(line);
            // The brace is needed: without it, entries of the other section of virtual tokens would match,
            // too.
            if (!ckscribe::Contains(line, section) || !ckscribe::Contains(line, "{")) continue;
            file->Write(lines);
            isInside = hasSection = true;
        } else if (ckscribe::Contains(line, "}")) {
            file->WriteLine(line);
            isInside = false;
        }
    }
    return hasSection;
}

}  // namespace

int WendrafilConfiguration::SetVirtualTokenSN(int index, unsigned int serial, bool proxy) {
    char text[16];
    std::snprintf(text, sizeof text, "%u", serial);
    return SetVirtualTokenSN(index, text, proxy);
}

int WendrafilConfiguration::AddVirtualTokenMember(int index, const char* serial, bool proxy) {
    const ckscribe::NumberedName key("VirtualToken%02dMembers", index);
    char label[64];
    if (!GetVirtualTokenLabel(index, label, sizeof label, proxy)) return 0;
    // The array holds a list and a number of 840 characters together, the comma between them, and NUL.
    char members[842];
    if (!GetVirtualTokenMembers(index, members, 840, proxy)) return Set(TokenSection(proxy), key, serial);
    if (std::strlen(members) + std::strlen(serial) > 840) return 0;
    std::strcat(members, ",");  // COMPAT: a comma follows an empty list, too
    std::strcat(members, serial);
    return Set(TokenSection(proxy), key, members);
}

int WendrafilConfiguration::RemoveVirtualTokenMember(int index, const char* serial, bool proxy) {
    char members[840];
    if (!GetVirtualTokenMembers(index, members, sizeof members, proxy) || members[0] == '\0') return 0;
    *std::remove(members, members + std::strlen(members), ' ') = '\0';

    char kept[841];  // a comma follows each item
    char* end = kept;
    for (const char* item = members; item != nullptr;) {
        const char* comma = std::strchr(item, ',');
        const std::string_view member =
            comma != nullptr ? std::string_view(item, comma) : std::string_view(item);
        if (member != serial) {
            end = std::copy(member.begin(), member.end(), end);
            *end++ = ',';
        }
        item = comma != nullptr ? comma + 1 : nullptr;
    }
    if (end != kept) --end;
    *end = '\0';
    return Set(TokenSection(proxy), ckscribe::NumberedName("VirtualToken%02dMembers", index), kept);
}

int WendrafilConfiguration::DeleteVirtualToken(int index, bool proxy) {
    const char* section = TokenSection(proxy);
    ckscribe::GrowingText kept;
    ckscribe::GrowingText deleted;
    int count = 0;
    for (int token = 0; token < kTokens; ++token) {
        count += AppendToken(*this, section, token, token == index ? &deleted : &kept);
    }
    ckscribe::FileRewrite file;
    if (count == 0 || !kept.IsWhole() || !file.Read(GetConfFileName())) return 0;
    return ReplaceLines(section, kept.View(), &file) && file.Commit();
}
