#include "tool/run/elf_file.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string_view>

namespace ckscribe {

namespace {

// Maps the bytes of a regular file. There are none if it cannot be read.
class MappedFile {
public:
    explicit MappedFile(const std::string& path) {
        const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
        if (descriptor < 0) return;
        struct stat status;
        if (fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) && status.st_size > 0) {
            size_ = static_cast<std::size_t>(status.st_size);
            bytes_ = mmap(nullptr, size_, PROT_READ, MAP_PRIVATE, descriptor, 0);
        }
        close(descriptor);
    }
    ~MappedFile() {
        if (bytes_ != MAP_FAILED) munmap(bytes_, size_);
    }
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;

    FileImage Image() const {
        return bytes_ == MAP_FAILED ? FileImage(nullptr, 0) : FileImage(bytes_, size_);
    }
    std::string_view Text() const {
        return bytes_ == MAP_FAILED ? std::string_view()
                                    : std::string_view(static_cast<const char*>(bytes_), size_);
    }

private:
    void* bytes_ = MAP_FAILED;
    std::size_t size_ = 0;
};

// Returns the interpreter of a script: "/usr/bin/env" for "#! /usr/bin/env -S x".
std::string InterpreterOfScript(std::string_view text) {
    std::string_view line = text.substr(2, text.find('\n') - 2);
    const std::size_t begin = line.find_first_not_of(" \t");
    if (begin == std::string_view::npos) return "";
    line.remove_prefix(begin);
    return std::string(line.substr(0, line.find_first_of(" \t\r")));
}

// Returns whether this is the loader of the GNU C library, which has such a name on every machine.
bool IsGnuLoader(std::string_view path) {
    const std::string_view name = path.substr(path.rfind('/') + 1);
    return name.starts_with("ld-linux") || name.starts_with("ld64") || name.starts_with("ld.so");
}

}  // namespace

ModuleKind KindOfModule(const std::string& path) {
    const MappedFile file(path);
    const FileImage image = file.Image();
    return image.IsLoadable() ? KindOfModule(ElfSymbols(image)) : ModuleKind::kNone;
}

Program ProgramAt(const std::string& path) {
    const MappedFile file(path);
    const std::string_view text = file.Text();
    if (text.starts_with("#!")) return {ProgramKind::kScript, InterpreterOfScript(text)};
    if (!text.starts_with("\x7f"
                          "ELF"))
        return {};
    const FileImage image = file.Image();
    if (!image.IsLoadable()) return {ProgramKind::kOtherArchitecture, ""};
    const char* const loader = image.Interpreter();
    if (loader == nullptr) return {ProgramKind::kStatic, ""};
    return {IsGnuLoader(loader) ? ProgramKind::kDynamic : ProgramKind::kOtherLoader, loader};
}

}  // namespace ckscribe
