#include "records/shared_vendor_records.h"

void CaptureSession(CommandType type, CK_SESSION_HANDLE session) {
    CommandDescriptor command(type, kStart, 0);
    command.AddDescriptor(Session(session));
    command.Capture();
}

void CaptureSessionAndNumber(CommandType type, CK_SESSION_HANDLE session, CK_ULONG number) {
    CommandDescriptor command(type, kStart, 0);
    command.AddDescriptor(Session(session));
    command.AddDescriptor(Number(number));
    command.Capture();
}

void CaptureSessionAndNumbers(CommandType type, CK_SESSION_HANDLE session, CK_ULONG first, CK_ULONG second) {
    CommandDescriptor command(type, kStart, 0);
    command.AddDescriptor(Session(session));
    command.AddDescriptor(Number(first));
    command.AddDescriptor(Number(second));
    command.Capture();
}

void CaptureSessionAndObject(CommandType type, CK_SESSION_HANDLE session, CK_OBJECT_HANDLE object) {
    CommandDescriptor command(type, kStart, 0);
    command.AddDescriptor(Session(session));
    command.AddDescriptor(Object(object));
    command.Capture();
}

void CaptureSessionAndSlot(CommandType type, CK_SESSION_HANDLE session, CK_SLOT_ID slot) {
    CommandDescriptor command(type, kStart, 0);
    command.AddDescriptor(Session(session));
    command.AddDescriptor(Slot(slot));
    command.Capture();
}

void CaptureSessionAndPointers(CommandType type, CK_SESSION_HANDLE session, Addresses addresses) {
    CommandDescriptor command(type, kStart, 0);
    command.AddDescriptor(Session(session));
    for (const void* address : addresses) command.AddDescriptor(Pointer(address));
    command.Capture();
}

void CaptureSessionAndSecret(CommandType type, CK_SESSION_HANDLE session, const void* secret,
                             CK_ULONG length) {
    CommandDescriptor command(type, kStart, 0);
    command.AddDescriptor(Session(session));
    command.AddDescriptor(Pointer(secret));
    command.AddDescriptor(Number(length));
    command.AddDescriptor(Pin(secret));
    command.Capture();
}

void CaptureSlot(CommandType type, CK_SLOT_ID slot) {
    CommandDescriptor command(type, kStart, 0);
    command.AddDescriptor(Slot(slot));
    command.Capture();
}

void CaptureSlotAndPointers(CommandType type, CK_SLOT_ID slot, Addresses addresses) {
    CommandDescriptor command(type, kStart, 0);
    command.AddDescriptor(Slot(slot));
    for (const void* address : addresses) command.AddDescriptor(Pointer(address));
    command.Capture();
}

void CaptureSlotFlagsAndNumber(CommandType type, CK_SLOT_ID slot, CK_FLAGS flags, CK_ULONG number) {
    CommandDescriptor command(type, kStart, 0);
    command.AddDescriptor(Slot(slot));
    command.AddDescriptor(Flags(flags));
    command.AddDescriptor(Number(number));
    command.Capture();
}

void CaptureResult(CommandType type, CK_RV rv) { CommandDescriptor(type, kEnd, rv).Capture(); }

void CaptureNumberOfSession(CommandType type, CK_RV rv, CK_SESSION_HANDLE session, const CK_ULONG* number) {
    CommandDescriptor command(type, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Session(session));
        command.AddDescriptor(Pointer(number));
        AddNumberAt(command, number);
    }
    command.Capture();
}

void CaptureObjectOfSession(CommandType type, CK_RV rv, CK_SESSION_HANDLE session,
                            const CK_OBJECT_HANDLE* object) {
    CommandDescriptor command(type, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Session(session));
        command.AddDescriptor(Pointer(object));
        if (object != nullptr) command.AddDescriptor(Object(ValueAt(object)));
    }
    command.Capture();
}

void CaptureBufferOfSession(CommandType type, CK_RV rv, CK_SESSION_HANDLE session, const void* buffer,
                            const CK_ULONG* length) {
    CommandDescriptor command(type, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Session(session));
        command.AddDescriptor(Pointer(buffer));
        command.AddDescriptor(Pointer(length));
        AddBytes(command, buffer, ValueAt(length));
    }
    command.Capture();
}

void CaptureMeasuredBufferOfSession(CommandType type, CK_RV rv, CK_SESSION_HANDLE session, const void* buffer,
                                    const CK_ULONG* length) {
    CommandDescriptor command(type, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Session(session));
        command.AddDescriptor(Pointer(buffer));
        AddNumberAt(command, length);
        AddBytes(command, buffer, ValueAt(length));
    }
    command.Capture();
}

void CaptureNumberOfSlot(CommandType type, CK_RV rv, CK_SLOT_ID slot, const CK_ULONG* number,
                         const char* label) {
    CommandDescriptor command(type, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slot));
        command.AddDescriptor(Pointer(number));
        AddNumberAt(command, number, label);
    }
    command.Capture();
}
