// Records of logging in and of PINs.

#include "records/shared_vendor_records.h"
#include "records/vendor_children.h"
#include "records/vendor_commands.h"
#include "records/vendor_records.h"

void InitIndirectTokenCmdStart(CK_SESSION_HANDLE hSession) {
    CaptureSession(kCmdInitIndirectToken, hSession);
}

void InitIndirectTokenCmdEnd(CK_RV rv, CK_SESSION_HANDLE) { CaptureResult(kCmdInitIndirectToken, rv); }

void InitIndirectPINCmdStart(CK_SESSION_HANDLE hSession, CK_UTF8CHAR_PTR pPin, CK_ULONG,
                             CK_SESSION_HANDLE hPrimarySession) {
    CommandDescriptor command(kCmdInitIndirectPIN, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Pin(pPin));
    command.AddDescriptor(Session(hPrimarySession));
    command.Capture();
}

void InitIndirectPINCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_UTF8CHAR_PTR, CK_ULONG, CK_SESSION_HANDLE) {
    CaptureResult(kCmdInitIndirectPIN, rv);
}

void ResetPINCmdStart(CK_SESSION_HANDLE hSession, CK_UTF8CHAR_PTR pPin, CK_ULONG ulPinLen) {
    CaptureSessionAndSecret(kCmdResetPIN, hSession, pPin, ulPinLen);
}

void ResetPINCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_UTF8CHAR_PTR, CK_ULONG) {
    CaptureResult(kCmdResetPIN, rv);
}

void InitRolePINCmdStart(CK_SESSION_HANDLE hSession, CK_USER_TYPE userType, CK_ULONG usOptions,
                         CK_UTF8CHAR_PTR pPin, CK_ULONG ulPinLen) {
    CommandDescriptor command(kCmdInitRolePIN, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(UserType(userType));
    command.AddDescriptor(ShortNumber(usOptions));
    command.AddDescriptor(Pointer(pPin));
    command.AddDescriptor(Number(ulPinLen));
    command.AddDescriptor(Pin(pPin));
    command.Capture();
}

void InitRolePINCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_USER_TYPE, CK_ULONG, CK_UTF8CHAR_PTR, CK_ULONG) {
    CaptureResult(kCmdInitRolePIN, rv);
}

void InitSlotRolePINCmdStart(CK_SESSION_HANDLE hSession, CK_SLOT_ID slotID, CK_USER_TYPE userType,
                             CK_ULONG usOptions, CK_UTF8CHAR_PTR pPin, CK_ULONG ulPinLen) {
    CommandDescriptor command(kCmdInitSlotRolePIN, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(UserType(userType));
    command.AddDescriptor(ShortNumber(usOptions));
    command.AddDescriptor(Pointer(pPin));
    command.AddDescriptor(Number(ulPinLen));
    command.AddDescriptor(Pin(pPin));
    command.Capture();
}

void InitSlotRolePINCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_SLOT_ID, CK_USER_TYPE, CK_ULONG, CK_UTF8CHAR_PTR,
                           CK_ULONG) {
    CaptureResult(kCmdInitSlotRolePIN, rv);
}

void CreateLoginChallengeCmdStart(CK_SESSION_HANDLE hSession, CK_USER_TYPE userType, CK_ULONG usOptions,
                                  CK_UTF8CHAR_PTR pPin, CK_ULONG ulPinLen, CK_BYTE_PTR pChallenge,
                                  CK_ULONG_PTR pulChallengeLen) {
    CommandDescriptor command(kCmdCreateLoginChallenge, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(UserType(userType));
    command.AddDescriptor(ShortNumber(usOptions));
    command.AddDescriptor(Number(ulPinLen));
    command.AddDescriptor(Pin(pPin));
    command.AddDescriptor(Number(AddressOf(pChallenge)));
    command.AddDescriptor(Number(AddressOf(pulChallengeLen)));
    command.Capture();
}

void CreateLoginChallengeCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_USER_TYPE userType,
                                CK_ULONG usOptions, CK_UTF8CHAR_PTR, CK_ULONG ulPinLen,
                                CK_BYTE_PTR pChallenge, CK_ULONG_PTR pulChallengeLen) {
    CommandDescriptor command(kCmdCreateLoginChallenge, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Session(hSession));
        command.AddDescriptor(UserType(userType));
        command.AddDescriptor(ShortNumber(usOptions));
        command.AddDescriptor(Number(ulPinLen));
        AddNumberAt(command, pulChallengeLen);
        command.AddDescriptor(Pin(pChallenge));
    }
    command.Capture();
}

void DeactivateCmdStart(CK_SLOT_ID slotID, CK_USER_TYPE userType) {
    CommandDescriptor command(kCmdDeactivate, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(UserType(userType));
    command.Capture();
}

void DeactivateCmdEnd(CK_RV rv, CK_SLOT_ID, CK_USER_TYPE) { CaptureResult(kCmdDeactivate, rv); }

void IndirectLoginCmdStart(CK_SESSION_HANDLE hSession, CK_USER_TYPE userType,
                           CK_SESSION_HANDLE hPrimarySession) {
    CommandDescriptor command(kCmdIndirectLogin, kStart, 0);
    command.AddDescriptor(Number(hSession));
    command.AddDescriptor(UserType(userType));
    command.AddDescriptor(Number(hPrimarySession));
    command.Capture();
}

void IndirectLoginCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_USER_TYPE, CK_SESSION_HANDLE) {
    CaptureResult(kCmdIndirectLogin, rv);
}

void SetPedIdCmdStart(CK_SLOT_ID slotID, CK_ULONG ulPedId) {
    CommandDescriptor command(kCmdSetPedId, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(PedId(ulPedId));
    command.Capture();
}

void SetPedIdCmdEnd(CK_RV rv, CK_SLOT_ID, CK_ULONG) { CaptureResult(kCmdSetPedId, rv); }

void GetPedIdCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulPedId) {
    CaptureSlotAndPointers(kCmdGetPedId, slotID, {pulPedId});
}

void GetPedIdCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulPedId) {
    CommandDescriptor command(kCmdGetPedId, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        command.AddDescriptor(Pointer(pulPedId));
        if (pulPedId != nullptr) command.AddDescriptor(PedId(ValueAt(pulPedId)));
    }
    command.Capture();
}
