// A GuardedCall holds the arguments of a call. Each thing that an argument points to has memory of its own,
// which ends where unmapped memory begins. One byte too many ends the reader.
#pragma once

#include <p11-kit/pkcs11.h>

#include <array>
#include <cstddef>
#include <cstring>
#include <string>
#include <vector>

#include "tests/faults/arguments_of_functions.h"

// GuardedPages are pages with an unmapped one behind each.
class GuardedPages {
public:
    static constexpr std::size_t kPage = 4096;

    GuardedPages();
    ~GuardedPages();
    GuardedPages(const GuardedPages&) = delete;
    GuardedPages& operator=(const GuardedPages&) = delete;

    // Makes every page free again.
    void Reset() { used = 0; }

    // Takes a free page, and returns its last `size` bytes.
    char* Take(std::size_t size);

    // Returns how many pages are taken. They are taken in the order of their indexes.
    std::size_t Used() const { return used; }

    // Makes the pages from index `begin` on and before `end` unreadable until Open opens all.
    void Close(std::size_t begin, std::size_t end);
    void Open();

    // Returns the address of a page that is never mapped.
    char* Gap() const { return pages + kPage; }

    // Returns the ends of the pages that have been taken. Each is long enough for whatever was put there.
    std::string Contents() const;

private:
    static constexpr std::size_t kCount = 48;
    static constexpr std::size_t kLongestContent = 2048;

    char* End(std::size_t index) const { return pages + (2 * index + 1) * kPage; }

    char* pages;
    std::size_t used = 0;
};

// A Place is a word of a call, or of what its arguments point to.
struct Place {
    std::string name;
    void* address;

    CK_ULONG Get() const {
        CK_ULONG word;
        std::memcpy(&word, address, sizeof word);
        return word;
    }
    void Set(CK_ULONG word) const { std::memcpy(address, &word, sizeof word); }
};

// AnyFunction is the type of any exported function, for a caller who hands on more words than the function
// has parameters.
using AnyFunction = CK_RV(CK_ULONG, CK_ULONG, CK_ULONG, CK_ULONG, CK_ULONG, CK_ULONG, CK_ULONG, CK_ULONG,
                          CK_ULONG, CK_ULONG, CK_ULONG, CK_ULONG, CK_ULONG, CK_ULONG, CK_ULONG, CK_ULONG,
                          CK_ULONG, CK_ULONG, CK_ULONG, CK_ULONG);

class GuardedCall {
public:
    // Resets `pages` and lays out a call there that PKCS#11 allows.
    GuardedCall(const FunctionArguments& function, GuardedPages& pages);
    GuardedCall(const GuardedCall&) = delete;
    GuardedCall& operator=(const GuardedCall&) = delete;

    // The arguments come first, and then words that no parameter takes.
    std::array<CK_ULONG, 20> words{};

    CK_RV Make(AnyFunction* called) const;

    // These are all pointers that somebody besides the target may follow, or must not follow. The pointers
    // inside a structure come behind the pointer to it.
    std::vector<Place> pointers;
    // The application says with these lengths and counts how much is there.
    std::vector<Place> inputLengths;
    // The application says with these lengths and counts how much room there is, and the target how much it
    // took.
    std::vector<Place> outputLengths;
    // The target stores a pointer here, null or valid, whatever else it does.
    std::vector<Place> functionLists;

    // Take the application's input away, or all of the call's memory, until the pages are opened.
    void CloseInputs();
    void CloseEverything() { pages.Close(0, pages.Used()); }

private:
    bool IsInput(std::size_t index) const;
    bool IsSecret(std::size_t index) const;
    void LayOut(std::size_t index);
    void PointTo(std::size_t index, void* memory);
    CK_ULONG* Words(std::size_t index, const std::string& name);
    void Mechanism(std::size_t index);
    void Template(std::size_t index);
    void Strings(std::size_t index);

    const FunctionArguments& function;
    const std::vector<Argument>& arguments;
    GuardedPages& pages;
    // `pagesBefore` says for each argument how many pages the arguments in front of it have.
    std::vector<std::size_t> pagesBefore;
};
