// Finds the symbols that a shared object defines, in its file or in its image in memory. It needs no C
// library.
//
// It reads only objects of this processor's class and byte order. It trusts nothing in a file: what lies
// outside of the file counts as absent.
#pragma once

#include <elf.h>
#include <link.h>
#include <stddef.h>
#include <stdint.h>

#ifndef ElfW
#define ElfW(type) Elf_##type  // as FreeBSD calls them
#endif

namespace ckscribe {

inline bool AreEqual(const char* one, const char* other) {
    while (*one != '\0' && *one == *other) ++one, ++other;
    return *one == *other;
}

// A FileImage is a file that is mapped completely.
class FileImage {
public:
    FileImage(const void* begin, size_t size) : begin_(static_cast<const char*>(begin)), size_(size) {}

    // Returns whether this is an ELF object that this machine's loader could load. No other function may be
    // called for other files.
    bool IsLoadable() const {
        const auto* const header = Inside<ElfW(Ehdr)>(0, 1);
        const unsigned char* const identity = header != nullptr ? header->e_ident : nullptr;
        return identity != nullptr && identity[0] == ELFMAG0 && identity[1] == ELFMAG1 &&
               identity[2] == ELFMAG2 && identity[3] == ELFMAG3 && identity[EI_CLASS] == kOwnClass &&
               identity[EI_DATA] == kOwnData && header->e_machine == kOwnMachine;
    }

    const ElfW(Dyn) * Dynamic() const {
        const ElfW(Phdr)* const dynamic =
            Segment([](const ElfW(Phdr) & each) { return each.p_type == PT_DYNAMIC; });
        return dynamic == nullptr
                   ? nullptr
                   : Inside<ElfW(Dyn)>(dynamic->p_offset, dynamic->p_filesz / sizeof(ElfW(Dyn)));
    }
    size_t DynamicCount() const {
        const ElfW(Phdr)* const dynamic =
            Segment([](const ElfW(Phdr) & each) { return each.p_type == PT_DYNAMIC; });
        return dynamic == nullptr ? 0 : dynamic->p_filesz / sizeof(ElfW(Dyn));
    }

    // Returns `count` things at an address of the object, or null.
    template <class Thing>
    const Thing* At(ElfW(Addr) address, size_t count) const {
        const ElfW(Phdr)* const segment = Segment([address](const ElfW(Phdr) & each) {
            return each.p_type == PT_LOAD && address >= each.p_vaddr &&
                   address - each.p_vaddr < each.p_filesz;
        });
        return segment == nullptr ? nullptr
                                  : Inside<Thing>(segment->p_offset + (address - segment->p_vaddr), count);
    }

    // Returns the text at an address, or null when it does not end inside the file.
    const char* Text(ElfW(Addr) address) const {
        const char* const text = At<char>(address, 1);
        if (text == nullptr) return nullptr;
        for (const char* end = text; end < begin_ + size_; ++end)
            if (*end == '\0') return text;
        return nullptr;
    }

    // Returns the loader that a program asks for, or null.
    const char* Interpreter() const {
        const ElfW(Phdr)* const segment =
            Segment([](const ElfW(Phdr) & each) { return each.p_type == PT_INTERP; });
        const char* const text =
            segment == nullptr ? nullptr : Inside<char>(segment->p_offset, segment->p_filesz);
        return text != nullptr && segment->p_filesz > 0 && text[segment->p_filesz - 1] == '\0' ? text
                                                                                               : nullptr;
    }

private:
    static constexpr unsigned char kOwnClass = sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;
    static constexpr unsigned char kOwnData =
        __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ ? ELFDATA2LSB : ELFDATA2MSB;
#if defined(__x86_64__)
    static constexpr unsigned kOwnMachine = EM_X86_64;
#elif defined(__aarch64__)
    static constexpr unsigned kOwnMachine = EM_AARCH64;
#else
#error "Name this processor's ELF number."
#endif

    template <class Thing>
    const Thing* Inside(uint64_t offset, uint64_t count) const {
        if (offset > size_ || count > (size_ - offset) / sizeof(Thing) || offset % alignof(Thing) != 0)
            return nullptr;
        return reinterpret_cast<const Thing*>(begin_ + offset);
    }

    template <class Condition>
        const ElfW(Phdr) * Segment(Condition isWanted) const {
        const auto* const header = Inside<ElfW(Ehdr)>(0, 1);
        const auto* const segments =
            header == nullptr ? nullptr : Inside<ElfW(Phdr)>(header->e_phoff, header->e_phnum);
        if (segments == nullptr) return nullptr;
        for (unsigned i = 0; i < header->e_phnum; ++i)
            if (isWanted(segments[i])) return &segments[i];
        return nullptr;
    }

    const char* begin_;
    size_t size_;
};

// A LoadedImage is an object that the loader has mapped.
class LoadedImage {
public:
    explicit LoadedImage(const link_map* object) : base_(object->l_addr), dynamic_(object->l_ld) {}

    const ElfW(Dyn) * Dynamic() const { return dynamic_; }
    static size_t DynamicCount() { return SIZE_MAX; }

    // The loader has already added the base to the addresses of most objects, but not to those of the
    // kernel's own object.
    template <class Thing>
    const Thing* At(ElfW(Addr) address, size_t) const {
        return reinterpret_cast<const Thing*>(address < base_ ? base_ + address : address);
    }
    const char* Text(ElfW(Addr) address) const { return At<char>(address, 1); }

private:
    ElfW(Addr) base_;
    const ElfW(Dyn) * dynamic_;
};

template <class Image>
class ElfSymbols {
public:
    explicit ElfSymbols(const Image& image) : image_(image) {
        const ElfW(Dyn)* const dynamic = image.Dynamic();
        if (dynamic == nullptr) return;
        for (size_t i = 0; i < image.DynamicCount() && dynamic[i].d_tag != DT_NULL; ++i) {
            const ElfW(Addr) value = dynamic[i].d_un.d_ptr;
            if (dynamic[i].d_tag == DT_GNU_HASH) gnuHash_ = value;
            if (dynamic[i].d_tag == DT_HASH) hash_ = value;
            if (dynamic[i].d_tag == DT_SYMTAB) symbols_ = value;
            if (dynamic[i].d_tag == DT_STRTAB) names_ = value;
        }
    }

    // Returns the symbol if the object itself defines it, else null.
    const ElfW(Sym) * Find(const char* name) const {
        if (symbols_ == 0 || names_ == 0) return nullptr;
        if (gnuHash_ != 0) return FindByGnuHash(name);
        return hash_ != 0 ? FindByHash(name) : nullptr;
    }
    bool Define(const char* name) const { return Find(name) != nullptr; }

    // Returns whether the object asks the loader for a library of this name.
    bool Need(const char* name) const {
        const ElfW(Dyn)* const dynamic = image_.Dynamic();
        for (size_t i = 0; dynamic != nullptr && i < image_.DynamicCount() && dynamic[i].d_tag != DT_NULL;
             ++i) {
            if (dynamic[i].d_tag != DT_NEEDED) continue;
            const char* const needed = image_.Text(names_ + dynamic[i].d_un.d_val);
            if (needed != nullptr && AreEqual(needed, name)) return true;
        }
        return false;
    }

private:
    const ElfW(Sym) * Definition(uint32_t index, const char* name) const {
        const auto* const symbol = image_.template At<ElfW(Sym)>(symbols_ + index * sizeof(ElfW(Sym)), 1);
        if (symbol == nullptr || symbol->st_shndx == SHN_UNDEF) return nullptr;
        const char* const text = image_.Text(names_ + symbol->st_name);
        return text != nullptr && AreEqual(text, name) ? symbol : nullptr;
    }

    const ElfW(Sym) * FindByGnuHash(const char* name) const {
        uint32_t wanted = 5381;
        for (const char* next = name; *next != '\0'; ++next)
            wanted = wanted * 33 + static_cast<unsigned char>(*next);

        const auto* const header = image_.template At<uint32_t>(gnuHash_, 4);
        if (header == nullptr || header[0] == 0) return nullptr;
        const uint32_t bucketCount = header[0];
        const uint32_t firstHashed = header[1];
        const ElfW(Addr) buckets = gnuHash_ + 4 * sizeof(uint32_t) + header[2] * sizeof(ElfW(Addr));
        const ElfW(Addr) chains = buckets + bucketCount * sizeof(uint32_t);
        const auto* const bucket =
            image_.template At<uint32_t>(buckets + wanted % bucketCount * sizeof(uint32_t), 1);
        if (bucket == nullptr || *bucket < firstHashed) return nullptr;
        for (uint32_t index = *bucket;; ++index) {
            const auto* const hash =
                image_.template At<uint32_t>(chains + (index - firstHashed) * sizeof(uint32_t), 1);
            if (hash == nullptr) return nullptr;
            const ElfW(Sym)* const symbol = (*hash | 1U) == (wanted | 1U) ? Definition(index, name) : nullptr;
            if (symbol != nullptr) return symbol;
            if ((*hash & 1U) != 0) return nullptr;
        }
    }

    const ElfW(Sym) * FindByHash(const char* name) const {
        uint32_t wanted = 0;
        for (const char* next = name; *next != '\0'; ++next) {
            wanted = (wanted << 4) + static_cast<unsigned char>(*next);
            wanted = (wanted ^ ((wanted & 0xf0000000U) >> 24)) & 0x0fffffffU;
        }
        const auto* const header = image_.template At<uint32_t>(hash_, 2);
        if (header == nullptr || header[0] == 0) return nullptr;
        const ElfW(Addr) buckets = hash_ + 2 * sizeof(uint32_t);
        const ElfW(Addr) chains = buckets + header[0] * sizeof(uint32_t);
        const auto* index = image_.template At<uint32_t>(buckets + wanted % header[0] * sizeof(uint32_t), 1);
        // A chain is at most as long as the table, but a damaged one may be a ring.
        for (uint32_t steps = 0; index != nullptr && *index != STN_UNDEF && steps < header[1]; ++steps) {
            if (const ElfW(Sym)* const symbol = Definition(*index, name)) return symbol;
            index = image_.template At<uint32_t>(chains + *index * sizeof(uint32_t), 1);
        }
        return nullptr;
    }

    const Image& image_;
    ElfW(Addr) gnuHash_ = 0;
    ElfW(Addr) hash_ = 0;
    ElfW(Addr) symbols_ = 0;
    ElfW(Addr) names_ = 0;
};

// A ModuleKind is a kind of shared object for PKCS#11.
enum class ModuleKind {
    kNone,            // no module: it does not define C_GetFunctionList
    kModule,          // a module
    kOtherInterface,  // clients ask it for its own interfaces by name
    kProxy,           // libp11-kit, which hands calls on to modules
    kOurs,            // libckscribe.so
};

template <class Image>
ModuleKind KindOfModule(const ElfSymbols<Image>& symbols) {
    if (!symbols.Define("C_GetFunctionList")) return ModuleKind::kNone;
    if (symbols.Define("CkLogSpecialInitialize")) return ModuleKind::kOurs;
    if (symbols.Define("p11_kit_module_load")) return ModuleKind::kProxy;
    if (symbols.Define("NSC_GetFunctionList") || symbols.Define("FC_GetFunctionList"))
        return ModuleKind::kOtherInterface;
    return ModuleKind::kModule;
}

}  // namespace ckscribe
