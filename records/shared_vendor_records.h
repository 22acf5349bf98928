// Several of the vendor's functions share these records. Each is named after what it shows.
//
// CaptureXxxAndYyy writes the start record of a command with these arguments. CaptureXxxOfYyy writes the end
// record of a command that returns Xxx for a slot or session. After success, and if a buffer was too small,
// this record shows the slot or session and the addresses through which Xxx is returned. It also shows Xxx
// itself if its address is not null. After any other error it shows only the result.
#pragma once

#include <initializer_list>

#include "records/vendor_children.h"

namespace ckscribe {

using Addresses = std::initializer_list<const void*>;

// These write start records.
void CaptureSession(CommandType type, CK_SESSION_HANDLE session);
void CaptureSessionAndNumber(CommandType type, CK_SESSION_HANDLE session, CK_ULONG number);
void CaptureSessionAndNumbers(CommandType type, CK_SESSION_HANDLE session, CK_ULONG first, CK_ULONG second);
void CaptureSessionAndObject(CommandType type, CK_SESSION_HANDLE session, CK_OBJECT_HANDLE object);
void CaptureSessionAndSlot(CommandType type, CK_SESSION_HANDLE session, CK_SLOT_ID slot);
void CaptureSessionAndPointers(CommandType type, CK_SESSION_HANDLE session, Addresses addresses);
// Shows the address and the length of the secret, and the mask in place of the secret.
void CaptureSessionAndSecret(CommandType type, CK_SESSION_HANDLE session, const void* secret,
                             CK_ULONG length);
void CaptureSlot(CommandType type, CK_SLOT_ID slot);
void CaptureSlotAndPointers(CommandType type, CK_SLOT_ID slot, Addresses addresses);
void CaptureSlotFlagsAndNumber(CommandType type, CK_SLOT_ID slot, CK_FLAGS flags, CK_ULONG number);

// These write end records.
void CaptureResult(CommandType type, CK_RV rv);
void CaptureNumberOfSession(CommandType type, CK_RV rv, CK_SESSION_HANDLE session, const CK_ULONG* number);
void CaptureObjectOfSession(CommandType type, CK_RV rv, CK_SESSION_HANDLE session,
                            const CK_OBJECT_HANDLE* object);
void CaptureBufferOfSession(CommandType type, CK_RV rv, CK_SESSION_HANDLE session, const void* buffer,
                            const CK_ULONG* length);
// Does the same, but the record shows the length and not its address.
void CaptureMeasuredBufferOfSession(CommandType type, CK_RV rv, CK_SESSION_HANDLE session, const void* buffer,
                                    const CK_ULONG* length);
void CaptureNumberOfSlot(CommandType type, CK_RV rv, CK_SLOT_ID slot, const CK_ULONG* number,
                         const char* label = nullptr);

}  // namespace ckscribe
