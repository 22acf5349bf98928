#pragma once

// The configuration store: finds the vendor's configuration file, reads its settings and edits them.
//
// An instance holds the file's path and five result buffers, but neither an open file nor its text: every
// lookup reads the whole file again, so that a change made by another program counts at once. Nothing throws
// and nothing is printed unless said so; results are 1 for success or found and 0 for failure or not found. A
// value that was not found leaves the caller's buffer alone; one that does not fit is cut without notice.
//
// Sizes of buffers count the terminating NUL. A pointer that an accessor returns points into the instance and
// is valid until that accessor is called again.
//
// Threads: lookups into the caller's own buffers may run at the same time, on one instance too. Accessors
// that return a pointer, and everything that edits, must be serialised by the caller (editors across
// processes too).

#include <atomic>
#include <cstdio>

class WendrafilConfiguration {
public:
    WendrafilConfiguration();
    virtual ~WendrafilConfiguration();

    // The path of the configuration file. Every operation on the file asks for it here, so that a derived
    // class can point the whole store at another file.
    virtual const char* GetConfFileName() const;

    WendrafilConfiguration(const WendrafilConfiguration&) = delete;
    WendrafilConfiguration& operator=(const WendrafilConfiguration&) = delete;

    // --- Places and kinds of store
    // ---------------------------------------------------------------------------

    // Stores and returns the file's path: "Wendrafil.conf" in the directory (its first 256 characters) that
    // the environment variable "WendrafilConfigurationPath" names, else in "/etc". Run by the constructor.
    const char* InitializeConfFileName();

    // Empties the registry path and returns the environment variable "WendrafilRegistryPath", which may be
    // null.
    const char* InitializeRegistryPathName();
    const char* GetRegistryPathName() const { return registryPathName_; }

    // Cuts a path back to its directory, in place; "/" and "\" separate, and the last of them stays.
    static void StripOffFileName(char* path);

    // The kind of store for all instances: 0 the file (the only one that works), 1 the registry, which finds
    // and stores nothing; any other value stands for no store.
    static void SetLibraryType(int type) { LibraryType.store(type, std::memory_order_relaxed); }
    static int GetLibraryType() { return LibraryType.load(std::memory_order_relaxed); }

    // The section of the network server's settings, for all instances; "OrmaSA Server" at first.
    // GetServerSection fails for a null buffer or when `size` is below the name's length; a name whose NUL
    // does not fit loses its last character. SetServerSection fails for null and keeps 63 characters; it must
    // not run while another thread uses the section.
    static int GetServerSection(char* buffer, unsigned int size);
    static int SetServerSection(const char* name);

    static const char* GetLBLibSectionName() { return "LBLib2"; }
    static const char* GetSessionSectionName() { return "Session"; }
    static int IsSTCEnabled() { return 1; }

    // 1 when the file can be opened for reading, or for reading and writing. With another kind of store
    // always 1.
    int TestR() const;
    int TestRW() const;

    // --- Reading the file
    // ------------------------------------------------------------------------------------

    // Reads a whole file: `*contents` receives a new array that the caller deletes (delete[]), with a NUL
    // after the text, and `*size` the file's size. Fails for null arguments, a file that cannot be opened or
    // asked for its size, without memory, and for an empty file; `*contents` is null then. A failed or short
    // read is not reported: the text then ends early.
    int ReadConfigurationFile(const char* path, char** contents, unsigned long* size) const;

    // Writes the text of the configuration file to `stream`.
    int DumpFile(FILE* stream) const;

    // Looks a key up (config/entry_lookup.h says how) and copies its value, cut to `valueSize` - 1
    // characters. `valueSize` is taken as unsigned; with 0 nothing is copied. Null arguments: not found.
    int GetConfigurationEntry(const char* section, const char* key, char* value, int valueSize) const;

    // The same when the store is the file, else 0.
    int GetConfigurationInfo(const char* section, const char* key, char* value, int valueSize) const;

    // The same in the current kind of store.
    int GetEntry(const char* section, const char* key, char* value, unsigned long valueSize) const;

    // The registry store exists in name only: nothing is found or stored.
    int GetRegistryEntry(const char*, const char*, char*, unsigned long) const { return 0; }
    int SetRegistryEntry(const char*, const char*, const char*, unsigned short) { return 0; }

    // --- Changing the file
    // -----------------------------------------------------------------------------------

    // Each rewrites the whole file in place: lines are cut at 838 characters and end with a line feed. 0 when
    // the store is not the file, for null arguments, when the file cannot be read whole or cannot be written
    // (it is untouched then), or when a line to write has 840 characters or more with its line feed; the old
    // line is gone then, the rest is written. Errors in writing go unreported.
    //
    // A section is taken to begin at a line that contains its name anywhere and to end at the next line that
    // contains "}". Names that are part of others, and values that mention a section, are therefore edited
    // along with it; a section that nothing closes gets no new key.

    // Sets a key. An entry of that name, or of a longer name that ends with it, becomes "   key = value;"; a
    // missing one is inserted before the section's "}", a missing section appended to the file. The line that
    // begins a section must contain "{" too.
    int SetConfigurationInfo(const char* section, const char* key, const char* value);
    int SetEntry(const char* section, const char* key, const char* value, unsigned short reserved = 0);

    // Drops every line of a section that contains the key anywhere.
    int ClearConfigurationInfo(const char* section, const char* key);
    int ClearEntry(const char* section, const char* key, unsigned short = 0) {
        return ClearConfigurationInfo(section, key);
    }

    // Drops a whole section.
    int ClearConfigurationInfo(const char* section);
    int ClearSection(const char* section, unsigned short = 0) { return ClearConfigurationInfo(section); }

    // Replaces all lines of a section by `body`, broken into lines after every 512 characters; a missing
    // section is appended to the file. The last argument is not used.
    int ReplaceConfigurationInfo(const char* section, const char* body, int reserved);

    // --- Libraries
    // -------------------------------------------------------------------------------------------

    // The PKCS#11 library, "LibUNIX64" of a section, "/usr/lib/libmordavek2.so" when it is missing (result
    // 0); the form without arguments reads section "Wendrafil2".
    int LibraryFileName(const char* section, char* buffer, int size) const;
    const char* LibraryFileName();

    // The load-balancing library, "LibUNIX" of "LBLib2", with the same default.
    const char* LBLibLibraryFileName();

    int GetFunctionBindLevel() const { return Number("Misc", "FunctionBindLevel", 8, 0); }

protected:
    static constexpr int kResultSize = 500;

    // For the derived logging class: its cached logging mask, which this class sets to 0 and never reads.
    // Atomic because application threads read it while one of them renews it; relaxed accesses suffice, it
    // stands alone.
    std::atomic<unsigned> loggingMask_{0};

    // Result buffers. The second, the fourth and the fifth are the derived logging class's to use.
    char libraryFileName_[kResultSize] = {};
    char ckLogLibraryFileName_[kResultSize] = {};
    char lbLibLibraryFileName_[kResultSize] = {};
    char logFileName_[kResultSize] = {};
    char errorFileName_[kResultSize] = {};

    // Counts the logging class's queries; this class never touches it. Atomic, relaxed, as application
    // threads count without a lock.
    static std::atomic<unsigned> reqToCheckConfigFile;

private:
    // The value as atoi reads its first `size` - 1 characters (`size` is at most 200), or `missing`.
    int Number(const char* section, const char* key, int size, int missing) const;

    // Relaxed: readers on other threads need the value only.
    static std::atomic<int> LibraryType;
    static char server_section[64];

    char confFileName_[kResultSize] = {};
    char registryPathName_[kResultSize] = {};
};
