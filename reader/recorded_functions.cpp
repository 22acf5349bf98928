#include "reader/recorded_functions.h"

#include <array>
#include <atomic>
#include <cstring>
#include <deque>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

namespace ckscribe {

namespace {

struct Row {
    std::string_view exported;
    std::string_view name;  // without its prefix
};

constexpr Row kRows[] = {
#define C_EVERY_ROW(Name, ...) {"C_" #Name, #Name},
#define CA_EVERY_ROW(Name) {"CA_" #Name, #Name},
#include "functions/functions.def"
    {"C_Terminate", "Terminate"},
    {kUnknownType, kUnknownType},
};
constexpr std::size_t kKnown = std::size(kRows);
constexpr std::size_t kMostNames = 10'000;

// Records of these operations print a specifier for each part.
constexpr std::string_view kOperations[] = {"Encrypt",       "Decrypt",     "Digest",        "Sign",
                                            "SignRecover",   "Verify",      "VerifyRecover", "DigestEncrypt",
                                            "DecryptDigest", "SignEncrypt", "DecryptVerify"};
constexpr std::string_view kSpecifiers[] = {"Init", "Update", "Final", "Key"};

std::string PrintedForm(std::string_view command, std::string_view specifier) {
    std::string printed(command);
    if (!specifier.empty()) (printed += '_') += specifier;
    return printed;
}

std::string PrintedNameOf(const Row& row) {
    if (!row.exported.starts_with("C_")) return std::string(row.name);
    // COMPAT: two functions have no name in records, and the final part of a search prints no specifier.
    if (row.name == "GetFunctionStatus" || row.name == "CancelFunction") return std::string(kUnknownType);
    if (row.name == "FindObjectsInit") return PrintedForm("FindObjects", "Init");
    if (row.name == "FindObjectsFinal") return "FindObjects";
    for (const std::string_view specifier : kSpecifiers) {
        if (!row.name.ends_with(specifier)) continue;
        const std::string_view command = row.name.substr(0, row.name.size() - specifier.size());
        for (const std::string_view operation : kOperations) {
            if (command == operation) return PrintedForm(command, specifier);
        }
    }
    return std::string(row.name);
}

std::uint64_t WordAt(const char* text) {
    std::uint64_t word;
    std::memcpy(&word, text, sizeof word);
    return word;
}

// Hashes the first and the last eight bytes. Nearly all names differ in them.
std::size_t HashOf(std::string_view name) {
    constexpr std::size_t kWord = sizeof(std::uint64_t);
    std::uint64_t first = 0;
    std::uint64_t last = 0;
    if (name.size() >= kWord) {
        first = WordAt(name.data());
        last = WordAt(name.data() + name.size() - kWord);
    } else {
        for (const char character : name) first = first << 8 | static_cast<unsigned char>(character);
    }
    std::uint64_t hash = (first ^ name.size()) * 0x9e3779b97f4a7c15;
    hash = (hash ^ hash >> 32 ^ last) * 0xff51afd7ed558ccd;
    return static_cast<std::size_t>(hash >> 40);
}

// Finds an index by name in a hash table of at least twice the size.
template <std::size_t size>
class NameSearch {
public:
    void Add(std::string_view name, std::uint16_t index) {
        std::size_t place = HashOf(name) % size;
        while (!cells[place].name.empty()) place = (place + 1) % size;
        cells[place] = {name, index};
    }
    int Find(std::string_view name) const {
        for (std::size_t place = HashOf(name) % size; !cells[place].name.empty();
             place = (place + 1) % size) {
            if (cells[place].name == name) return cells[place].index;
        }
        return -1;
    }

private:
    struct Cell {
        std::string_view name;
        std::uint16_t index = 0;
    };
    std::array<Cell, size> cells{};
};

class Functions {
public:
    Functions() {
        for (std::uint16_t i = 0; i < kKnown; ++i) {
            exported.Add(kRows[i].exported, i);
            // COMPAT: the vendor's list function leaves no records; its name in them is the standard's.
            if (kRows[i].exported != "CA_GetFunctionList") AddPrinted(PrintedNameOf(kRows[i]), i);
        }
        for (std::uint16_t i = 0; i < printed.size(); ++i) printedNames.Add(printed[i].printed, i);
    }

    int FindExported(std::string_view name) const { return exported.Find(name); }
    const PrintedFunction* FindPrinted(std::string_view name) const {
        const int found = printedNames.Find(name);
        return found < 0 ? nullptr : &printed[static_cast<std::size_t>(found)];
    }

private:
    void AddPrinted(const std::string& name, std::uint16_t function) {
        // Records do not say to which of the two nameless functions they belong.
        if (name == kUnknownType) function = kKnown - 1;
        for (PrintedFunction& row : printed) {
            if (row.printed != name) continue;
            if (name != kUnknownType) row.functions[row.count++] = FunctionIndex{function};
            return;
        }
        names.push_back(name);
        printed.push_back({names.back(), {FunctionIndex{function}}, 1});
    }

    NameSearch<1024> exported;
    NameSearch<1024> printedNames;
    std::deque<std::string> names;
    std::vector<PrintedFunction> printed;
};

const Functions& Known() {
    static const Functions functions;
    return functions;
}

// LaterNames holds the names that FunctionOfName has added.
struct LaterNames {
    std::mutex mutex;
    std::deque<std::string> names;
    std::unordered_map<std::string_view, std::uint16_t> indexes;
    std::atomic<std::size_t> count = 0;
};

LaterNames& Later() {
    static LaterNames later;
    return later;
}

}  // namespace

std::string_view FunctionName(FunctionIndex function) {
    const std::size_t index = IndexOf(function);
    if (index < kKnown) return kRows[index].exported;
    LaterNames& later = Later();
    const std::lock_guard lock(later.mutex);
    return later.names[index - kKnown];
}

std::size_t FunctionCount() { return kKnown + Later().count; }

FunctionIndex FunctionOfName(std::string_view name) {
    if (const int known = Known().FindExported(name); known >= 0) return FunctionIndex(known);
    LaterNames& later = Later();
    const std::lock_guard lock(later.mutex);
    if (const auto found = later.indexes.find(name); found != later.indexes.end())
        return FunctionIndex{found->second};
    if (later.names.size() == kMostNames) return FunctionIndex(kKnown - 1);
    const auto index = static_cast<std::uint16_t>(kKnown + later.names.size());
    later.indexes.emplace(later.names.emplace_back(name), index);
    later.count = later.names.size();
    return FunctionIndex{index};
}

const PrintedFunction* FindPrinted(std::string_view printed) { return Known().FindPrinted(printed); }

const PrintedFunction* FindPrinted(std::string_view command, std::string_view specifier) {
    if (specifier == "None") return command.find('_') == command.npos ? FindPrinted(command) : nullptr;
    return FindPrinted(PrintedForm(command, specifier));
}

}  // namespace ckscribe
