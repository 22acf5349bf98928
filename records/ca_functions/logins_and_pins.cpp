// Builds the records of logging in and of PINs.

#include "records/shared_vendor_records.h"
#include "records/vendor_children.h"
#include "records/vendor_commands.h"
#include "records/vendor_records.h"

using namespace ckscribe;

void InitIndirectTokenCmdStart(CK_SESSION_HANDLE hSession) {
    CaptureSession(kCmdInitIndirectToken, hSession);
}

void InitIndirectTokenCmdEnd(CK_RV rv, CK_SESSION_HANDLE) { CaptureResult(kCmdInitIndirectToken, rv); }

void InitIndirectPINCmdStart(CK_SESSION_HANDLE hSession, CK_UTF8CHAR_PTR pPin, CK_ULONG,
                             CK_SESSION_HANDLE hPrimarySession) {
    StartRecord record(kCmdInitIndirectPIN);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(PinChild(pPin));
    record.AddDescriptor(SessionChild(hPrimarySession));
    record.Capture();
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
    StartRecord record(kCmdInitRolePIN);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(UserTypeChild(userType));
    record.AddDescriptor(ShortNumberChild(usOptions));
    record.AddDescriptor(PointerChild(pPin));
    record.AddDescriptor(PinLengthChild(ulPinLen));
    record.AddDescriptor(PinChild(pPin));
    record.Capture();
}

void InitRolePINCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_USER_TYPE, CK_ULONG, CK_UTF8CHAR_PTR, CK_ULONG) {
    CaptureResult(kCmdInitRolePIN, rv);
}

void InitSlotRolePINCmdStart(CK_SESSION_HANDLE hSession, CK_SLOT_ID slotID, CK_USER_TYPE userType,
                             CK_ULONG usOptions, CK_UTF8CHAR_PTR pPin, CK_ULONG ulPinLen) {
    StartRecord record(kCmdInitSlotRolePIN);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(SlotChild(slotID));
    record.AddDescriptor(UserTypeChild(userType));
    record.AddDescriptor(ShortNumberChild(usOptions));
    record.AddDescriptor(PointerChild(pPin));
    record.AddDescriptor(PinLengthChild(ulPinLen));
    record.AddDescriptor(PinChild(pPin));
    record.Capture();
}

void InitSlotRolePINCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_SLOT_ID, CK_USER_TYPE, CK_ULONG, CK_UTF8CHAR_PTR,
                           CK_ULONG) {
    CaptureResult(kCmdInitSlotRolePIN, rv);
}

void CreateLoginChallengeCmdStart(CK_SESSION_HANDLE hSession, CK_USER_TYPE userType, CK_ULONG usOptions,
                                  CK_UTF8CHAR_PTR pPin, CK_ULONG ulPinLen, CK_BYTE_PTR pChallenge,
                                  CK_ULONG_PTR pulChallengeLen) {
    StartRecord record(kCmdCreateLoginChallenge);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(UserTypeChild(userType));
    record.AddDescriptor(ShortNumberChild(usOptions));
    record.AddDescriptor(PinLengthChild(ulPinLen));
    record.AddDescriptor(PinChild(pPin));
    record.AddDescriptor(NumberChild(AsNumber(pChallenge)));
    record.AddDescriptor(NumberChild(AsNumber(pulChallengeLen)));
    record.Capture();
}

void CreateLoginChallengeCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_USER_TYPE userType,
                                CK_ULONG usOptions, CK_UTF8CHAR_PTR, CK_ULONG ulPinLen,
                                CK_BYTE_PTR pChallenge, CK_ULONG_PTR pulChallengeLen) {
    EndRecord record(kCmdCreateLoginChallenge, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SessionChild(hSession));
        record.AddDescriptor(UserTypeChild(userType));
        record.AddDescriptor(ShortNumberChild(usOptions));
        record.AddDescriptor(PinLengthChild(ulPinLen));
        AddPinLengthAt(record, pulChallengeLen);
        record.AddDescriptor(PinChild(pChallenge));
    }
    record.Capture();
}

void DeactivateCmdStart(CK_SLOT_ID slotID, CK_USER_TYPE userType) {
    StartRecord record(kCmdDeactivate);
    record.AddDescriptor(SlotChild(slotID));
    record.AddDescriptor(UserTypeChild(userType));
    record.Capture();
}

void DeactivateCmdEnd(CK_RV rv, CK_SLOT_ID, CK_USER_TYPE) { CaptureResult(kCmdDeactivate, rv); }

void IndirectLoginCmdStart(CK_SESSION_HANDLE hSession, CK_USER_TYPE userType,
                           CK_SESSION_HANDLE hPrimarySession) {
    StartRecord record(kCmdIndirectLogin);
    record.AddDescriptor(NumberChild(hSession));
    record.AddDescriptor(UserTypeChild(userType));
    record.AddDescriptor(NumberChild(hPrimarySession));
    record.Capture();
}

void IndirectLoginCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_USER_TYPE, CK_SESSION_HANDLE) {
    CaptureResult(kCmdIndirectLogin, rv);
}

void SetPedIdCmdStart(CK_SLOT_ID slotID, CK_ULONG ulPedId) {
    StartRecord record(kCmdSetPedId);
    record.AddDescriptor(SlotChild(slotID));
    record.AddDescriptor(PedIdChild(ulPedId));
    record.Capture();
}

void SetPedIdCmdEnd(CK_RV rv, CK_SLOT_ID, CK_ULONG) { CaptureResult(kCmdSetPedId, rv); }

void GetPedIdCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulPedId) {
    CaptureSlotAndPointers(kCmdGetPedId, slotID, {pulPedId});
}

void GetPedIdCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulPedId) {
    EndRecord record(kCmdGetPedId, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SlotChild(slotID));
        record.AddDescriptor(PointerChild(pulPedId));
        if (pulPedId != nullptr) record.AddDescriptor(PedIdChild(ValueAt(pulPedId)));
    }
    record.Capture();
}
