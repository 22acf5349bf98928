#include "config/entry_lookup.h"

#include <cctype>
#include <cstring>

namespace {

bool IsSpace(char c) { return std::isspace(static_cast<unsigned char>(c)); }

// Returns whether white space, "=", white space and "{" follow a section's name: they open the section.
// `*after` receives the place where the scan stops.
bool OpensSection(const char* afterName, const char** after) {
    const char* c = afterName;
    bool hasEquals = false;
    for (; IsSpace(*c) || (*c == '=' && !hasEquals); ++c) hasEquals = hasEquals || *c == '=';
    *after = c;
    return hasEquals && *c == '{';
}

bool StartsSectionName(const char* text, const char* c) {
    return c == text || c[-1] == '\r' || c[-1] == '\n' || c[-1] == ' ';
}

void CutAt(char* text, const char* ends) { text[std::strcspn(text, ends)] = '\0'; }

// If the section's own name holds the "}" that ends the section, NUL stands before the first key.
bool StartsKey(const char* c) {
    return c[-1] == ' ' || c[-1] == '\r' || c[-1] == '\n' || c[-1] == '{' || c[-1] == '\0';
}

char* SkipSpaces(char* c) {
    while (*c == ' ') ++c;
    return c;
}

char* FindKey(char* body, const char* key) {
    const std::size_t length = std::strlen(key);
    // This is the end of the spaces after the key. It stays, and no space is skipped twice.
    char* equals = body;
    for (char* found = body; (found = std::strstr(found, key)) != nullptr; ++found) {
        if (found + length >= equals) equals = SkipSpaces(found + length);
        if (StartsKey(found) && *equals == '=') return found;
        if (*found == '\0') break;
    }
    return nullptr;
}

}  // namespace

namespace ckscribe {

const char* FindSectionName(const char* text, const char* section) {
    const std::size_t length = std::strlen(section);
    if (length == 0) return nullptr;
    for (const char* from = text; (from = std::strstr(from, section)) != nullptr;) {
        const char* name = from;
        from = name + length;
        if (StartsSectionName(text, name) && OpensSection(from, &from)) return name;
    }
    return nullptr;
}

const char* FindEntryValue(char* text, const char* section, const char* key) {
    const char* const found = FindSectionName(text, section);
    if (found == nullptr) return nullptr;
    char* const name = text + (found - text);
    CutAt(name, "}");
    char* entry = FindKey(name + std::strlen(section), key);
    if (entry == nullptr) return nullptr;
    CutAt(entry, ";\r\n");
    char* equals = std::strchr(entry, '=');
    return equals == nullptr ? nullptr : SkipSpaces(equals + 1);
}

}  // namespace ckscribe
