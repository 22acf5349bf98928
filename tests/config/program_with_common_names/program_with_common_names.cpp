// Every name here was once a global name of the package's libraries. Each function and class is the program's
// own, and the package must neither call it nor clash with it.

#include <cstddef>
#include <cstdlib>

#include "config/wendrafil_configuration.h"

int OpenFile(const char*, int) { std::abort(); }
const char* FindEntryValue(char*, const char*, const char*) { std::abort(); }
bool ShellWordFromPath(const char*, char*, unsigned long) { std::abort(); }
void WriteHexDigits(const void*, std::size_t, char*) { std::abort(); }

// If the package's classes were global, the linker would take the functions of these classes for theirs.
class FileText {
public:
    bool Read(const char* path);
    int ReadFrom(int file);
};
bool FileText::Read(const char*) { std::abort(); }
int FileText::ReadFrom(int) { std::abort(); }

class FileRewrite {
public:
    ~FileRewrite();
    bool Read(const char* path);
    bool Commit();
};
FileRewrite::~FileRewrite() { std::abort(); }
bool FileRewrite::Read(const char*) { std::abort(); }
bool FileRewrite::Commit() { std::abort(); }

class GrowingText {
public:
    ~GrowingText();
    void Append(const char* text);
};
GrowingText::~GrowingText() { std::abort(); }
void GrowingText::Append(const char*) { std::abort(); }

class TextBuffer {
public:
    ~TextBuffer();
    void Grow(std::size_t size);
};
TextBuffer::~TextBuffer() { std::abort(); }
void TextBuffer::Grow(std::size_t) { std::abort(); }

int main() {
    WendrafilConfiguration store;
    char value[16];
    return store.SetConfigurationInfo("Common", "Name", "1") == 1 &&
                   store.GetConfigurationInfo("Common", "Name", value, sizeof value) == 1 &&
                   store.ClearEntry("Common", "Name") == 1
               ? EXIT_SUCCESS
               : EXIT_FAILURE;
}
