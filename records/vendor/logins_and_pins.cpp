// Records of logging in and of PINs.

#include "records/vendor_children.h"
#include "records/vendor_commands.h"
#include "records/vendor_records.h"

void InitIndirectTokenCmdStart(CK_SESSION_HANDLE hSession) {
    CommandDescriptor command(kCmdInitIndirectToken, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.Capture();
}

void InitIndirectTokenCmdEnd(CK_RV rv, CK_SESSION_HANDLE) {
    CommandDescriptor command(kCmdInitIndirectToken, kEnd, rv);
    command.Capture();
}

void InitIndirectPINCmdStart(CK_SESSION_HANDLE hSession, CK_UTF8CHAR_PTR pPin, CK_ULONG,
                             CK_SESSION_HANDLE hPrimarySession) {
    CommandDescriptor command(kCmdInitIndirectPIN, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Pin(pPin));
    command.AddDescriptor(Session(hPrimarySession));
    command.Capture();
}

void InitIndirectPINCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_UTF8CHAR_PTR, CK_ULONG, CK_SESSION_HANDLE) {
    CommandDescriptor command(kCmdInitIndirectPIN, kEnd, rv);
    command.Capture();
}

void ResetPINCmdStart(CK_SESSION_HANDLE hSession, CK_UTF8CHAR_PTR pPin, CK_ULONG ulPinLen) {
    CommandDescriptor command(kCmdResetPIN, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Pointer(pPin));
    command.AddDescriptor(Number(ulPinLen));
    command.AddDescriptor(Pin(pPin));
    command.Capture();
}

void ResetPINCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_UTF8CHAR_PTR, CK_ULONG) {
    CommandDescriptor command(kCmdResetPIN, kEnd, rv);
    command.Capture();
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
    CommandDescriptor command(kCmdInitRolePIN, kEnd, rv);
    command.Capture();
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
    CommandDescriptor command(kCmdInitSlotRolePIN, kEnd, rv);
    command.Capture();
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

void DeactivateCmdEnd(CK_RV rv, CK_SLOT_ID, CK_USER_TYPE) {
    CommandDescriptor command(kCmdDeactivate, kEnd, rv);
    command.Capture();
}

void IndirectLoginCmdStart(CK_SESSION_HANDLE hSession, CK_USER_TYPE userType,
                           CK_SESSION_HANDLE hPrimarySession) {
    CommandDescriptor command(kCmdIndirectLogin, kStart, 0);
    command.AddDescriptor(Number(hSession));
    command.AddDescriptor(UserType(userType));
    command.AddDescriptor(Number(hPrimarySession));
    command.Capture();
}

void IndirectLoginCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_USER_TYPE, CK_SESSION_HANDLE) {
    CommandDescriptor command(kCmdIndirectLogin, kEnd, rv);
    command.Capture();
}

void SetPedIdCmdStart(CK_SLOT_ID slotID, CK_ULONG ulPedId) {
    CommandDescriptor command(kCmdSetPedId, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(PedId(ulPedId));
    command.Capture();
}

void SetPedIdCmdEnd(CK_RV rv, CK_SLOT_ID, CK_ULONG) {
    CommandDescriptor command(kCmdSetPedId, kEnd, rv);
    command.Capture();
}

void GetPedIdCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulPedId) {
    CommandDescriptor command(kCmdGetPedId, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Pointer(pulPedId));
    command.Capture();
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
