// Only the vendor's record builders use these parts. The other parts are in records/record_children.h.
//
// COMPAT: The format is uneven. Some records show a session, a handle or an address as a plain number, and
// others as its own kind. Some show each address followed by its value, and others show all addresses first.
#pragma once

#include "records/record_children.h"

namespace ckscribe {

// Returns whether an end record shows outputs: after success, and if a buffer was too small.
inline bool ShowsOutputs(CK_RV rv) { return rv == CKR_OK || rv == CKR_BUFFER_TOO_SMALL; }

// Each adds what the pointer points to. A null pointer adds nothing.
void AddNumberAt(CommandDescriptor& record, const CK_ULONG* number, const char* label = nullptr);
void AddBytes(CommandDescriptor& record, const void* bytes, CK_ULONG length, const char* label = nullptr);
// Adds two children: the same bytes as a string and as a value.
void AddText(CommandDescriptor& record, const void* text, CK_ULONG length, const char* label = nullptr);
// Adds the length of a secret that came back.
void AddPinLengthAt(CommandDescriptor& record, const CK_ULONG* length);
// These do the same as AddBytes and AddText, for bytes that name something.
void AddName(CommandDescriptor& record, const void* name, CK_ULONG length);
void AddNameText(CommandDescriptor& record, const void* name, CK_ULONG length, const char* label = nullptr);

// A record shows at most this many bytes of an argument whose length it does not show. Such a length is a
// guess about the vendor's prototype. If the guess is wrong, the length is any number that a register held.
inline constexpr CK_ULONG kLongestOfUnshownLength = 4096;

// Does the same as AddBytes, for a length that the record does not show.
void AddBytesOfUnshownLength(CommandDescriptor& record, const void* bytes, CK_ULONG length,
                             const char* label = nullptr);
// Returns the length of a text that ends at its terminator, at most kLongestOfUnshownLength. Returns 0 for
// null.
CK_ULONG LengthOfText(const void* text);

}  // namespace ckscribe

// Adds policies or capabilities that a call sets: their count, then each identifier with its value.
void capsOrPolicyArrayAdd(CommandDescriptor& record, CK_ULONG count, const CK_ULONG* ids,
                          const CK_ULONG* values);
// Adds the addresses through which a call asks for policies or capabilities, with the sizes of the arrays.
void capsOrPolicyPtrsAdd(CommandDescriptor& record, const CK_ULONG* ids, const CK_ULONG* idCount,
                         const CK_ULONG* values, const CK_ULONG* valueCount);
// Adds the policies or capabilities that a call returned. Each of the two arrays is shown to its own count.
void capsOrPolicyDescAdd(CommandDescriptor& record, const CK_ULONG* ids, const CK_ULONG* idCount,
                         const CK_ULONG* values, const CK_ULONG* valueCount);
