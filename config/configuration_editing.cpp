// Changes the configuration file by four operations. Each goes over the lines of the file once. COMPAT: the
// effect of an operation on a line depends on the names that the line contains anywhere. The rules by which a
// key is looked up are stricter.

#include <cstring>
#include <string_view>

#include "config/file_rewrite.h"
#include "config/wendrafil_configuration.h"
#include "util/tolk_text.h"

namespace {

constexpr char kEntry[] = "   %s = %s;\n";
constexpr char kNewSection[] = "%s = {\n";
constexpr char kLastEntryOfFile[] = "   %s = %s;\n}";  // COMPAT: no line feed follows the brace

// Returns whether only white space stands between the key's first occurrence in the line and the "=" after
// it. COMPAT: a longer key that ends with the given one counts as that key: "   LogFile = x;" is an entry of
// "File".
bool IsEntryOf(const char* key, std::string_view line) {
    const std::size_t start = line.find(key);
    if (start == std::string_view::npos) return false;
    const std::size_t equals = line.find('=', start + std::strlen(key));
    if (equals == std::string_view::npos) return false;
    char name[ckscribe::FileRewrite::kLineLimit + 1];
    name[line.copy(name, equals - start, start)] = '\0';
    return std::strcmp(Tolk_TrimWhiteSpaces(name), key) == 0;
}

// Writes the body in lines of 512 characters, and `end` after the last one.
void WriteBody(ckscribe::FileRewrite* file, std::string_view body, const char* end) {
    constexpr std::size_t kPiece = 512;
    for (; body.size() > kPiece; body.remove_prefix(kPiece)) file->WriteLine(body.substr(0, kPiece));
    file->Write(body);
    file->Write(end);
}

}  // namespace

int WendrafilConfiguration::SetConfigurationInfo(const char* section, const char* key, const char* value) {
    if (section == nullptr || key == nullptr || value == nullptr) return 0;
    ckscribe::FileRewrite file;
    if (GetLibraryType() != 0 || !file.Read(GetConfFileName())) return 0;
    bool isInside = false;
    bool hasSection = false;
    bool isReplaced = false;
    for (std::string_view line; file.NextLine(&line);) {
        if (!isInside && ckscribe::Contains(line, section) && ckscribe::Contains(line, "{")) {
            isInside = hasSection = true;
        } else if (isInside && ckscribe::Contains(line, "}")) {
            if (!isReplaced) file.WriteFormatted(kEntry, key, value);
            isInside = false;
        } else if (isInside && IsEntryOf(key, line)) {
            file.WriteFormatted(kEntry, key, value);
            isReplaced = true;
            continue;
        }
        file.WriteLine(line);
    }
    if (!hasSection) {
        file.WriteFormatted(kNewSection, section);
        file.WriteFormatted(kLastEntryOfFile, key, value);
    }
    return file.Commit();
}

int WendrafilConfiguration::ClearConfigurationInfo(const char* section, const char* key) {
    if (section == nullptr || key == nullptr) return 0;
    ckscribe::FileRewrite file;
    if (GetLibraryType() != 0 || !file.Read(GetConfFileName())) return 0;
    bool isInside = false;
    for (std::string_view line; file.NextLine(&line);) {
        if (!isInside) {
            isInside = ckscribe::Contains(line, section);
        } else if (ckscribe::Contains(line, "}")) {
            isInside = false;
        } else if (ckscribe::Contains(line, key)) {
            continue;
        }
        file.WriteLine(line);
    }
    return file.Commit();
}

int WendrafilConfiguration::ClearConfigurationInfo(const char* section) {
    if (section == nullptr) return 0;
    ckscribe::FileRewrite file;
    if (GetLibraryType() != 0 || !file.Read(GetConfFileName())) return 0;
    bool isInside = false;
    for (std::string_view line; file.NextLine(&line);) {
        if (isInside) {
            isInside = !ckscribe::Contains(line, "}");
        } else if (ckscribe::Contains(line, section)) {
            // COMPAT: any mention of the name counts, even in the value of another section.
            isInside = true;
        } else {
            file.WriteLine(line);
        }
    }
    return file.Commit();
}

int WendrafilConfiguration::ReplaceConfigurationInfo(const char* section, const char* body, int) {
    if (section == nullptr || body == nullptr) return 0;
    ckscribe::FileRewrite file;
    if (GetLibraryType() != 0 || !file.Read(GetConfFileName())) return 0;
    bool isInside = false;
    bool hasSection = false;
    for (std::string_view line; file.NextLine(&line);) {
        if (!isInside) {
            file.WriteLine(line);
            if (!ckscribe::Contains(line, section)) continue;
            WriteBody(&file, body, "\n");
            isInside = hasSection = true;
        } else if (ckscribe::Contains(line, "}")) {
            file.WriteLine(line);
            isInside = false;
        }
    }
    if (!hasSection) {
        file.WriteFormatted(kNewSection, section);
        WriteBody(&file, body, "\n}");
    }
    return file.Commit();
}

int WendrafilConfiguration::SetEntry(const char* section, const char* key, const char* value,
                                     unsigned short) {
    switch (GetLibraryType()) {
        case 0:
            return SetConfigurationInfo(section, key, value);
        case 1:
            return SetRegistryEntry(section, key, value, 0);
        default:
            return 0;
    }
}
