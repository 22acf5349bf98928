// Records of PKCS#11 section "Slot and token management functions".

#include "records/record_children.h"
#include "records/standard_records.h"

void GetSlotListStart(CK_BBOOL tokenPresent, CK_SLOT_ID_PTR, CK_ULONG_PTR) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kGetSlotList, kStart, 0);
    command.AddDescriptor(Boolean(tokenPresent, "tknPresent="));
    command.Capture();
}

void GetSlotListEnd(CK_RV rv, CK_BBOOL, CK_SLOT_ID_PTR pSlotList, CK_ULONG_PTR pulCount) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kGetSlotList, kEnd, rv);
    command.AddDescriptor(SlotList(pSlotList, ValueAt(pulCount)));
    command.Capture();
}

void GetSlotInfoStart(CK_SLOT_ID slotID, CK_SLOT_INFO_PTR) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kGetSlotInfo, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.Capture();
}

void GetSlotInfoEnd(CK_RV rv, CK_SLOT_ID, CK_SLOT_INFO_PTR pInfo) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kGetSlotInfo, kEnd, rv);
    command.AddDescriptor(SlotInfo(pInfo));
    command.Capture();
}

void GetTokenInfoStart(CK_SLOT_ID slotID, CK_TOKEN_INFO_PTR pInfo) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kGetTokenInfo, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Pointer(pInfo));
    command.Capture();
}

void GetTokenInfoEnd(CK_RV rv, CK_SLOT_ID, CK_TOKEN_INFO_PTR pInfo) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kGetTokenInfo, kEnd, rv);
    command.AddDescriptor(Pointer(pInfo));
    if (pInfo != nullptr) command.AddDescriptor(TokenInfo(pInfo));
    command.Capture();
}

void WaitForSlotEventStart(CK_FLAGS flags, CK_SLOT_ID_PTR, CK_VOID_PTR) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kWaitForSlotEvent, kStart, 0);
    command.AddDescriptor(Flags(flags));
    command.Capture();
}

void WaitForSlotEventEnd(CK_RV rv, CK_FLAGS, CK_SLOT_ID_PTR pSlot, CK_VOID_PTR) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kWaitForSlotEvent, kEnd, rv);
    // The address of the slot identifier in place of the identifier; kept, the record is defined so.
    command.AddDescriptor(Slot(reinterpret_cast<CK_SLOT_ID>(pSlot)));
    command.Capture();
}

void GetMechanismListStart(CK_SLOT_ID slotID, CK_MECHANISM_TYPE_PTR, CK_ULONG_PTR) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kGetMechanismList, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.Capture();
}

void GetMechanismListEnd(CK_RV rv, CK_SLOT_ID, CK_MECHANISM_TYPE_PTR pMechanismList, CK_ULONG_PTR pulCount) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kGetMechanismList, kEnd, rv);
    command.AddDescriptor(MechanismTypeList(pMechanismList, ValueAt(pulCount)));
    command.Capture();
}

void GetMechanismInfoStart(CK_SLOT_ID slotID, CK_MECHANISM_TYPE type, CK_MECHANISM_INFO_PTR) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kGetMechanismInfo, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(MechanismType(type));
    command.Capture();
}

void GetMechanismInfoEnd(CK_RV rv, CK_SLOT_ID, CK_MECHANISM_TYPE, CK_MECHANISM_INFO_PTR pInfo) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kGetMechanismInfo, kEnd, rv);
    command.AddDescriptor(MechanismInfo(pInfo));
    command.Capture();
}

void InitTokenStart(CK_SLOT_ID slotID, CK_UTF8CHAR_PTR pPin, CK_ULONG, CK_UTF8CHAR_PTR pLabel) {
    if (!IsLogged(kDestroying)) return;
    CommandDescriptor command(kInitToken, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Pin(pPin));
    command.AddDescriptor(Bytes(pLabel, kLabelLength, "label="));
    command.Capture();
}

void InitTokenEnd(CK_RV rv, CK_SLOT_ID, CK_UTF8CHAR_PTR, CK_ULONG, CK_UTF8CHAR_PTR) {
    if (!IsLogged(kDestroying)) return;
    CommandDescriptor command(kInitToken, kEnd, rv);
    command.Capture();
}

void InitPINStart(CK_SESSION_HANDLE hSession, CK_UTF8CHAR_PTR pPin, CK_ULONG) {
    if (!IsLogged(kDestroying)) return;
    CommandDescriptor command(kInitPIN, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Pin(pPin));
    command.Capture();
}

void InitPINEnd(CK_RV rv, CK_SESSION_HANDLE, CK_UTF8CHAR_PTR, CK_ULONG) {
    if (!IsLogged(kDestroying)) return;
    CommandDescriptor command(kInitPIN, kEnd, rv);
    command.Capture();
}

void SetPINStart(CK_SESSION_HANDLE hSession, CK_UTF8CHAR_PTR pOldPin, CK_ULONG, CK_UTF8CHAR_PTR pNewPin,
                 CK_ULONG) {
    if (!IsLogged(kAdministering)) return;
    CommandDescriptor command(kSetPIN, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Pin(pOldPin, "Old="));
    command.AddDescriptor(Pin(pNewPin, "New="));
    command.Capture();
}

void SetPINEnd(CK_RV rv, CK_SESSION_HANDLE, CK_UTF8CHAR_PTR, CK_ULONG, CK_UTF8CHAR_PTR, CK_ULONG) {
    if (!IsLogged(kAdministering)) return;
    CommandDescriptor command(kSetPIN, kEnd, rv);
    command.Capture();
}
