#include "records/shared_vendor_records.h"

namespace ckscribe {

void CaptureSession(CommandType type, CK_SESSION_HANDLE session) {
    StartRecord record(type);
    record.AddDescriptor(SessionChild(session));
    record.Capture();
}

void CaptureSessionAndNumber(CommandType type, CK_SESSION_HANDLE session, CK_ULONG number) {
    StartRecord record(type);
    record.AddDescriptor(SessionChild(session));
    record.AddDescriptor(NumberChild(number));
    record.Capture();
}

void CaptureSessionAndNumbers(CommandType type, CK_SESSION_HANDLE session, CK_ULONG first, CK_ULONG second) {
    StartRecord record(type);
    record.AddDescriptor(SessionChild(session));
    record.AddDescriptor(NumberChild(first));
    record.AddDescriptor(NumberChild(second));
    record.Capture();
}

void CaptureSessionAndObject(CommandType type, CK_SESSION_HANDLE session, CK_OBJECT_HANDLE object) {
    StartRecord record(type);
    record.AddDescriptor(SessionChild(session));
    record.AddDescriptor(ObjectChild(object));
    record.Capture();
}

void CaptureSessionAndSlot(CommandType type, CK_SESSION_HANDLE session, CK_SLOT_ID slot) {
    StartRecord record(type);
    record.AddDescriptor(SessionChild(session));
    record.AddDescriptor(SlotChild(slot));
    record.Capture();
}

void CaptureSessionAndPointers(CommandType type, CK_SESSION_HANDLE session, Addresses addresses) {
    StartRecord record(type);
    record.AddDescriptor(SessionChild(session));
    for (const void* address : addresses) record.AddDescriptor(PointerChild(address));
    record.Capture();
}

void CaptureSessionAndSecret(CommandType type, CK_SESSION_HANDLE session, const void* secret,
                             CK_ULONG length) {
    StartRecord record(type);
    record.AddDescriptor(SessionChild(session));
    record.AddDescriptor(PointerChild(secret));
    record.AddDescriptor(PinLengthChild(length));
    record.AddDescriptor(PinChild(secret));
    record.Capture();
}

void CaptureSlot(CommandType type, CK_SLOT_ID slot) {
    StartRecord record(type);
    record.AddDescriptor(SlotChild(slot));
    record.Capture();
}

void CaptureSlotAndPointers(CommandType type, CK_SLOT_ID slot, Addresses addresses) {
    StartRecord record(type);
    record.AddDescriptor(SlotChild(slot));
    for (const void* address : addresses) record.AddDescriptor(PointerChild(address));
    record.Capture();
}

void CaptureSlotFlagsAndNumber(CommandType type, CK_SLOT_ID slot, CK_FLAGS flags, CK_ULONG number) {
    StartRecord record(type);
    record.AddDescriptor(SlotChild(slot));
    record.AddDescriptor(FlagsChild(flags));
    record.AddDescriptor(NumberChild(number));
    record.Capture();
}

void CaptureResult(CommandType type, CK_RV rv) { EndRecord(type, rv).Capture(); }

void CaptureNumberOfSession(CommandType type, CK_RV rv, CK_SESSION_HANDLE session, const CK_ULONG* number) {
    EndRecord record(type, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SessionChild(session));
        record.AddDescriptor(PointerChild(number));
        AddNumberAt(record, number);
    }
    record.Capture();
}

void CaptureObjectOfSession(CommandType type, CK_RV rv, CK_SESSION_HANDLE session,
                            const CK_OBJECT_HANDLE* object) {
    EndRecord record(type, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SessionChild(session));
        record.AddDescriptor(PointerChild(object));
        if (object != nullptr) record.AddDescriptor(ObjectChild(ValueAt(object)));
    }
    record.Capture();
}

void CaptureBufferOfSession(CommandType type, CK_RV rv, CK_SESSION_HANDLE session, const void* buffer,
                            const CK_ULONG* length) {
    EndRecord record(type, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SessionChild(session));
        record.AddDescriptor(PointerChild(buffer));
        record.AddDescriptor(PointerChild(length));
        AddBytes(record, buffer, ValueAt(length));
    }
    record.Capture();
}

void CaptureMeasuredBufferOfSession(CommandType type, CK_RV rv, CK_SESSION_HANDLE session, const void* buffer,
                                    const CK_ULONG* length) {
    EndRecord record(type, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SessionChild(session));
        record.AddDescriptor(PointerChild(buffer));
        AddNumberAt(record, length);
        AddBytes(record, buffer, ValueAt(length));
    }
    record.Capture();
}

void CaptureNumberOfSlot(CommandType type, CK_RV rv, CK_SLOT_ID slot, const CK_ULONG* number,
                         const char* label) {
    EndRecord record(type, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SlotChild(slot));
        record.AddDescriptor(PointerChild(number));
        AddNumberAt(record, number, label);
    }
    record.Capture();
}

}  // namespace ckscribe
