#include "config/wendrafil_configuration.h"

#include <fcntl.h>

#include <cstdlib>
#include <cstring>

#include "config/entry_lookup.h"
#include "config/file_text.h"
#include "host/environment.h"
#include "host/uncancelled_io.h"
#include "util/cache_line.h"

// Threads write here in every call. Nothing that they only read should share the cache line.
alignas(ckscribe::kCacheLine) std::atomic<unsigned> WendrafilConfiguration::reqToCheckConfigFile{0};
std::atomic<int> WendrafilConfiguration::LibraryType{0};
char WendrafilConfiguration::server_section[64] = "OrmaSA Server";

namespace {

// Copies a text, cut to `size` - 1 characters. Copies nothing if `size` is 0.
void CopyCut(const char* text, char* buffer, unsigned size) {
    if (size == 0) return;
    const size_t length = strnlen(text, size - 1);
    std::memcpy(buffer, text, length);
    buffer[length] = '\0';
}

constexpr char kDefaultLibrary[] = "/usr/lib/libmordavek2.so";

bool CanOpen(const char* path, int access) {
    const int file = ckscribe::OpenFile(path, access);
    return file >= 0 && ckscribe::CloseUncancelled(file) == 0;
}

}  // namespace

WendrafilConfiguration::WendrafilConfiguration() { InitializeConfFileName(); }

WendrafilConfiguration::~WendrafilConfiguration() = default;

const char* WendrafilConfiguration::GetConfFileName() const { return confFileName; }

const char* WendrafilConfiguration::InitializeConfFileName() {
    const char* directory = ckscribe::TrustedEnvironment("WendrafilConfigurationPath");
    std::snprintf(confFileName, sizeof confFileName, "%.256s/Wendrafil.conf",
                  directory != nullptr ? directory : "/etc");
    return confFileName;
}

const char* WendrafilConfiguration::InitializeRegistryPathName() {
    registryPathName[0] = '\0';
    return ckscribe::TrustedEnvironment("WendrafilRegistryPath");
}

void WendrafilConfiguration::StripOffFileName(char* path) {
    for (size_t length = std::strlen(path); length > 0; --length) {
        char& last = path[length - 1];
        if (last == '/' || last == '\\') return;
        last = '\0';
    }
}

int WendrafilConfiguration::GetServerSection(char* buffer, unsigned int size) {
    if (buffer == nullptr || size < std::strlen(server_section)) return 0;
    CopyCut(server_section, buffer, size);
    return 1;
}

int WendrafilConfiguration::SetServerSection(const char* name) {
    if (name == nullptr) return 0;
    CopyCut(name, server_section, sizeof server_section);
    return 1;
}

int WendrafilConfiguration::TestR() const {
    return GetLibraryType() != 0 || CanOpen(GetConfFileName(), O_RDONLY);
}

int WendrafilConfiguration::TestRW() const {
    return GetLibraryType() != 0 || CanOpen(GetConfFileName(), O_RDWR);
}

int WendrafilConfiguration::ReadConfigurationFile(const char* path, char** contents,
                                                  unsigned long* size) const {
    if (path == nullptr || contents == nullptr || size == nullptr) return 0;
    ckscribe::FileText file;
    const bool isRead = file.Read(path);
    *contents = file.text.release();
    *size = file.size;
    return isRead;
}

int WendrafilConfiguration::DumpFile(FILE* stream) const {
    ckscribe::FileText file;
    if (!file.Read(GetConfFileName())) return 0;
    std::fputs(file.text.get(), stream);
    return 1;
}

int WendrafilConfiguration::GetConfigurationEntry(const char* section, const char* key, char* value,
                                                  int valueSize) const {
    if (section == nullptr || key == nullptr || value == nullptr) return 0;
    return LookUp(section, key, value, valueSize) == Found::kEntry ? 1 : 0;
}

WendrafilConfiguration::Found WendrafilConfiguration::LookUp(const char* section, const char* key,
                                                             char* value, int valueSize) const {
    ckscribe::FileText file;
    if (!file.Read(GetConfFileName())) return Found::kNoText;
    const bool isReadInVain = !file.isWhole && file.text[0] == '\0';
    if (isReadInVain) return Found::kNoText;
    const char* found = ckscribe::FindEntryValue(file.text.get(), section, key);
    if (found == nullptr) return Found::kNoEntry;
    CopyCut(found, value, static_cast<unsigned>(valueSize));
    return Found::kEntry;
}

int WendrafilConfiguration::GetConfigurationInfo(const char* section, const char* key, char* value,
                                                 int valueSize) const {
    return GetLibraryType() == 0 ? GetConfigurationEntry(section, key, value, valueSize) : 0;
}

int WendrafilConfiguration::GetEntry(const char* section, const char* key, char* value,
                                     unsigned long valueSize) const {
    switch (GetLibraryType()) {
        case 0:
            return GetConfigurationInfo(section, key, value, static_cast<int>(valueSize));
        case 1:
            return GetRegistryEntry(section, key, value, valueSize);
        default:
            return 0;
    }
}

int WendrafilConfiguration::LibraryFileName(const char* section, char* buffer, int size) const {
    if (GetConfigurationInfo(section, "LibUNIX64", buffer, size)) return 1;
    if (buffer != nullptr) CopyCut(kDefaultLibrary, buffer, static_cast<unsigned>(size));
    return 0;
}

const char* WendrafilConfiguration::LibraryFileName() {
    LibraryFileName("Wendrafil2", libraryFileName, kResultSize);
    return libraryFileName;
}

const char* WendrafilConfiguration::LBLibLibraryFileName() {
    if (!GetConfigurationInfo(GetLBLibSectionName(), "LibUNIX", lbLibLibraryFileName, kResultSize))
        CopyCut(kDefaultLibrary, lbLibLibraryFileName, kResultSize);
    return lbLibLibraryFileName;
}
