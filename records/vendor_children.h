// What only the records of the vendor's functions are written with; the rest is in records/record_children.h.
//
// The format is uneven in places, and what reads it knows it so: some records show a session, a handle or an
// address as a plain number where others have a kind for it, some pair each address with what is behind it
// and others show all addresses first. All of that is kept.
#pragma once

#include "records/record_children.h"

namespace ckscribe {

// Whether an end record shows more than the result: after success, and when a buffer was too small.
inline bool ShowsOutputs(CK_RV rv) { return rv == CKR_OK || rv == CKR_BUFFER_TOO_SMALL; }

// Each adds what stands behind a pointer, and nothing for a null pointer.
void AddNumberAt(CommandDescriptor& record, const CK_ULONG* number, const char* label = nullptr);
void AddBytes(CommandDescriptor& record, const void* bytes, CK_ULONG length, const char* label = nullptr);
// A text is two children, the same bytes as a string and as a value.
void AddText(CommandDescriptor& record, const void* text, CK_ULONG length, const char* label = nullptr);

// The most that a record shows of something whose length it does not show. Such a length is a guess about the
// vendor's prototype: where the guess is wrong, it is a left-over of the caller's, and may be any number.
inline constexpr CK_ULONG kLongestOfUnshownLength = 4096;

// AddBytes for a length that the record does not show.
void AddBytesOfUnshownLength(CommandDescriptor& record, const void* bytes, CK_ULONG length,
                             const char* label = nullptr);
// The length of a text that ends at its terminator, at most kLongestOfUnshownLength. 0 for null.
CK_ULONG LengthOfText(const void* text);

}  // namespace ckscribe

// Policies or capabilities that are set: their count, then each identifier with its value.
void capsOrPolicyArrayAdd(CommandDescriptor& record, CK_ULONG count, const CK_ULONG* ids,
                          const CK_ULONG* values);
// The addresses through which a set of them is asked for, with the room that is behind them.
void capsOrPolicyPtrsAdd(CommandDescriptor& record, const CK_ULONG* ids, const CK_ULONG* idCount,
                         const CK_ULONG* values, const CK_ULONG* valueCount);
// The set that was returned. The two arrays may differ in length, each is shown to its own count.
void capsOrPolicyDescAdd(CommandDescriptor& record, const CK_ULONG* ids, const CK_ULONG* idCount,
                         const CK_ULONG* values, const CK_ULONG* valueCount);
