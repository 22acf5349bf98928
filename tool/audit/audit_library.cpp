// This is the audit library of `ckscribe run`. In every process of the command, the dynamic loader asks it
// which file to load for a name. The audit library answers libckscribe.so for the PKCS#11 module of the
// process. When libckscribe.so then asks for its target, the audit library answers the module. See
// rtld-audit(7).
//
// It has no C library, keeps no descriptor, starts no thread, and changes only kConfigurationVariable among
// all things that the process can see. If it cannot find something out, the loader does what it does without
// an audit library. The loader holds its lock while it calls, therefore no two threads are in this library at
// once.

#include <link.h>
#include <stdint.h>

#include "tool/audit/elf_symbols.h"
#include "tool/audit/names.h"
#include "tool/audit/system_call.h"

using namespace ckscribe;

// The compiler may call these two functions for long copies.
extern "C" void* memcpy(void* to, const void* from, size_t size) {
    auto* const written = static_cast<volatile char*>(to);
    const auto* const read = static_cast<const char*>(from);
    for (size_t i = 0; i < size; ++i) written[i] = read[i];
    return to;
}
extern "C" void* memset(void* to, int value, size_t size) {
    auto* const written = static_cast<volatile char*>(to);
    for (size_t i = 0; i < size; ++i) written[i] = static_cast<char>(value);
    return to;
}

namespace {

constexpr size_t kLongestPath = 4096;

// A Text always has its NUL. A text that does not fit makes it empty, because half a path is a wrong path.
class Text {
public:
    const char* Get() const { return characters_; }
    bool IsEmpty() const { return length_ == 0; }
    size_t Length() const { return length_; }
    void Clear() { characters_[length_ = 0] = '\0'; }

    Text& Add(const char* text, size_t length) {
        if (length >= sizeof characters_ - length_) {
            Clear();
            return *this;
        }
        for (size_t i = 0; i < length; ++i) characters_[length_ + i] = text[i];
        characters_[length_ += length] = '\0';
        return *this;
    }
    Text& Add(const char* text) {
        size_t length = 0;
        while (text[length] != '\0') ++length;
        return Add(text, length);
    }
    Text& AddNumber(long number) {
        char digits[24];
        size_t begin = sizeof digits;
        do digits[--begin] = static_cast<char>('0' + number % 10);
        while ((number /= 10) > 0);
        return Add(digits + begin, sizeof digits - begin);
    }

private:
    char characters_[kLongestPath] = {};
    size_t length_ = 0;
};

// Returns the part of `text` behind `beginning`, or null when `text` begins with something else.
const char* Behind(const char* beginning, const char* text) {
    for (; *beginning != '\0'; ++beginning, ++text)
        if (*beginning != *text) return nullptr;
    return text;
}

const char* FileName(const char* path) {
    const char* name = path;
    for (; *path != '\0'; ++path)
        if (*path == '/') name = path + 1;
    return name;
}

bool HasSlash(const char* path) { return FileName(path) != path; }

// Recognises a file that it has seen, under whatever name it comes.
struct SeenFile {
    bool isKnown = false;
    dev_t device = 0;
    ino_t inode = 0;

    bool Remember(const char* path) {
        struct stat status;
        isKnown = StatusOf(path, status);
        if (isKnown) device = status.st_dev, inode = status.st_ino;
        return isKnown;
    }
    bool Is(const char* path) const {
        struct stat status;
        return isKnown && StatusOf(path, status) && status.st_dev == device && status.st_ino == inode;
    }
};

enum class Choice { kNothing, kFile, kName, kFirst };

// `place` is the private directory of the run. If it is empty, the library does nothing.
Text place;
Text configurationEntry;   // what the process is to have in its environment
bool isAtRunTime = false;  // all that the program was linked with is loaded
// If `isInert` is true, the private configuration is out of reach, and nothing may be changed.
bool isInert = false;

bool areSettingsRead = false;
Text library;     // libckscribe.so
Text wanted;      // the file or the name that Choice means
Text ownTarget;   // of an application that loads libckscribe.so itself
Text targetLink;  // what the private configuration names
Choice choice = Choice::kNothing;

Text module;  // the module of this process, once it is chosen
SeenFile moduleFile;
bool isTraceNoticed = false;
bool isLossNoticed = false;

// `isNeededName` is true while the loader looks for a library that the asking object was linked with.
bool isNeededName = false;

void Notice(char kind, const char* text) {
    static Text notice;
    notice.Clear();
    notice.Add(&kind, 1).AddNumber(ProcessNumber()).Add(" ").Add(text).Add("", 1);
    static Text path;
    path.Clear();
    path.Add(place.Get()).Add(kNoticesFile);
    const int descriptor = OpenFile(path.Get(), O_WRONLY | O_APPEND);
    if (descriptor < 0) return;
    if (!notice.IsEmpty()) WriteFile(descriptor, notice.Get(), notice.Length());
    CloseFile(descriptor);
}

void TakeSetting(const char* line, size_t length) {
    static Text setting;
    setting.Clear();
    setting.Add(line, length);
    const auto take = [](const char* name, Text& value) {
        const char* const text = Behind(name, setting.Get());
        if (text != nullptr) value.Add(text);
        return text != nullptr;
    };
    take(kLibrarySetting, library);
    take(kOwnTargetSetting, ownTarget);
    if (take(kModuleSetting, wanted)) choice = Choice::kFile;
    if (take(kNameSetting, wanted)) choice = Choice::kName;
    if (Behind(kFirstSetting, setting.Get()) != nullptr) choice = Choice::kFirst;
}

// The settings are read when a process loads its first object at run time, because most processes never load
// one.
void ReadSettings() {
    if (areSettingsRead) return;
    areSettingsRead = true;
    static char text[4 * kLongestPath];
    static Text path;
    path.Add(place.Get()).Add(kSettingsFile);
    const int descriptor = OpenFile(path.Get(), O_RDONLY);
    if (descriptor < 0) return;
    long size = ReadFile(descriptor, text, sizeof text);
    CloseFile(descriptor);
    const char* line = text;
    for (const char* next = text; next < text + size; ++next) {
        if (*next != '\n') continue;
        TakeSetting(line, static_cast<size_t>(next - line));
        line = next + 1;
    }
    targetLink.Add(place.Get()).Add(kTargetLink);
}

// Makes the variable that leads to a configuration lead to the private configuration, and returns true.
// Returns false for any other variable.
bool TakeConfiguration(char** variable) {
    static Text beginning;
    if (beginning.IsEmpty()) beginning.Add(kConfigurationVariable).Add("=");
    const char* const value = Behind(beginning.Get(), *variable);
    if (value == nullptr) return false;
    if (AreEqual(value, place.Get())) return true;
    Notice(kConfigurationNotice, value);
    *variable = const_cast<char*>(configurationEntry.Get());
    return true;
}

ModuleKind KindOfFile(const char* path) {
    const int descriptor = OpenFile(path, O_RDONLY | O_NONBLOCK);
    if (descriptor < 0) return ModuleKind::kNone;
    ModuleKind kind = ModuleKind::kNone;
    struct stat status;
    if (StatusOf(descriptor, status) && S_ISREG(status.st_mode) && status.st_size > 0) {
        const auto size = static_cast<size_t>(status.st_size);
        if (const void* const bytes = MapFile(descriptor, size)) {
            const FileImage image(bytes, size);
            if (image.IsLoadable()) kind = KindOfModule(ElfSymbols(image));
            UnmapFile(bytes, size);
        }
    }
    CloseFile(descriptor);
    return kind;
}

ModuleKind KindOfLoaded(const link_map* object) {
    const LoadedImage image(object);
    return KindOfModule(ElfSymbols(image));
}

// Keeps the path from the root, because the path must mean the same file when libckscribe.so asks for its
// target.
void Choose(const char* path) {
    if (!moduleFile.Remember(path)) return;
    if (path[0] != '/') {
        static char directory[kLongestPath];
        if (SystemCall(SYS_getcwd, reinterpret_cast<long>(directory), sizeof directory) <= 0) return;
        module.Add(directory).Add(directory[1] == '\0' ? "" : "/");
    }
    module.Add(path);
}

// An application that loads libckscribe.so itself gets the target that its own configuration names.
void ChooseOwnTarget() {
    if (module.IsEmpty() && !ownTarget.IsEmpty()) Choose(ownTarget.Get());
}

// Chooses the module of this process if this file is it.
void ConsiderFile(const char* path) {
    switch (choice) {
        case Choice::kNothing:
            return;
        case Choice::kFile: {
            SeenFile file;
            file.Remember(wanted.Get());
            if (file.Is(path) && KindOfFile(path) != ModuleKind::kOurs) Choose(path);
            return;
        }
        case Choice::kName:
        case Choice::kFirst:
            if (choice == Choice::kName && !AreEqual(FileName(path), wanted.Get())) return;
            const ModuleKind kind = KindOfFile(path);
            if (kind == ModuleKind::kModule ||
                (choice == Choice::kName && kind == ModuleKind::kOtherInterface))
                Choose(path);
            if (kind == ModuleKind::kOurs) ChooseOwnTarget();
            return;
    }
}

// libckscribe.so loads only its target, whatever its configuration calls it.
bool IsTargetOfOurs(const char* name, const link_map* requester) {
    return AreEqual(name, targetLink.Get()) || KindOfLoaded(requester) == ModuleKind::kOurs;
}

// Returns the program's present environment, or null. A copy of the C library's variable in the program
// counts; the program comes first in the list of objects.
char** EnvironmentNow(const link_map* object) {
    while (object->l_prev != nullptr) object = object->l_prev;
    for (; object != nullptr; object = object->l_next) {
        const LoadedImage image(object);
        if (const ElfW(Sym)* const variable = ElfSymbols(image).Find("__environ"))
            return *reinterpret_cast<char***>(object->l_addr + variable->st_value);
    }
    return nullptr;
}

// libckscribe.so looks for its configuration in the environment when it is loaded. Without one it would print
// a message.
bool IsConfigured(const link_map* requester) {
    char** environment = EnvironmentNow(requester);
    for (; environment != nullptr && *environment != nullptr; ++environment)
        if (TakeConfiguration(environment)) return true;
    if (!isLossNoticed) Notice(kLostNotice, "");
    isLossNoticed = true;
    return false;
}

bool CanBeRead(const char* path) {
    const int descriptor = OpenFile(path, O_RDONLY);
    if (descriptor >= 0) CloseFile(descriptor);
    return descriptor >= 0;
}

// A process that has changed its user or its root may not be able to read the private configuration or
// libckscribe.so any more. It then gets its module: libckscribe.so without its configuration would print a
// message.
bool IsInReach() {
    static Text configuration;
    if (configuration.IsEmpty()) configuration.Add(place.Get()).Add(kConfigurationFile);
    return CanBeRead(configuration.Get()) && CanBeRead(library.Get());
}

// Returns the file to load for a name or a path that could be the module.
const char* FileFor(const char* path, const link_map* requester) {
    if (module.IsEmpty()) ConsiderFile(path);
    return moduleFile.Is(path) && IsInReach() && IsConfigured(requester) ? library.Get() : path;
}

const char* Search(const char* name, const link_map* requester, unsigned stage) {
    if ((stage & LA_SER_ORIG) != 0) {
        isNeededName = ElfSymbols(LoadedImage(requester)).Need(name);
        if (isNeededName) return name;
        if (IsTargetOfOurs(name, requester)) {
            ChooseOwnTarget();
            return module.IsEmpty() ? name : module.Get();
        }
        // The loader looks for a name without a slash in several places, and asks for each of them.
        if (!HasSlash(name)) return name;
    }
    return isNeededName ? name : FileFor(name, requester);
}

void NoticeModule(const link_map* object) {
    const ModuleKind kind = KindOfLoaded(object);
    if (kind == ModuleKind::kOurs && !isTraceNoticed && !module.IsEmpty()) {
        isTraceNoticed = true;
        Notice(kTracedNotice, module.Get());
    }
    if (kind == ModuleKind::kOtherInterface && !moduleFile.Is(object->l_name))
        Notice(kOtherInterfaceNotice, object->l_name);
    if (kind != ModuleKind::kModule || moduleFile.Is(object->l_name)) return;
    Notice(isAtRunTime && !isNeededName ? kUntouchedNotice : kLinkedNotice, object->l_name);
}

__attribute__((constructor)) void Begin(int, char**, char** environment) {
    static Text variable;
    variable.Add(kRunVariable).Add("=");
    for (char** each = environment; *each != nullptr; ++each)
        if (const char* const value = Behind(variable.Get(), *each)) place.Add(value);
    if (place.IsEmpty()) return;

    configurationEntry.Add(kConfigurationVariable).Add("=").Add(place.Get());
    isInert = true;
    for (char** each = environment; *each != nullptr; ++each)
        if (TakeConfiguration(each)) isInert = false;
    if (isInert) Notice(kLostNotice, "");
}

}  // namespace

// The answer 0 declines for good, and the process runs as if there were no audit library.
extern "C" __attribute__((visibility("default"))) unsigned la_version(unsigned version) {
    return place.IsEmpty() || isInert ? 0 : version;
}

extern "C" __attribute__((visibility("default"))) void la_preinit(uintptr_t*) { isAtRunTime = true; }

// The answer asks for no symbol bindings: calls between objects then cost the same as without an audit
// library.
extern "C" __attribute__((visibility("default"))) unsigned la_objopen(link_map* object, Lmid_t, uintptr_t*) {
    NoticeModule(object);
    return 0;
}

extern "C" __attribute__((visibility("default"))) char* la_objsearch(const char* name, uintptr_t* cookie,
                                                                     unsigned stage) {
    const char* found = name;
    if (isAtRunTime) {
        ReadSettings();
        if (!library.IsEmpty()) found = Search(name, reinterpret_cast<const link_map*>(*cookie), stage);
    }
    return const_cast<char*>(found);
}
