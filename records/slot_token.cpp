// Builds the records of PKCS#11 section "Slot and token management functions".

#include "records/record_children.h"
#include "records/standard_records.h"

using namespace ckscribe;

void GetSlotListStart(CK_BBOOL tokenPresent, CK_SLOT_ID_PTR, CK_ULONG_PTR) {
    if (!LevelSelects(kGetSlotList)) return;
    StartRecord record(kGetSlotList);
    record.AddDescriptor(BooleanChild(tokenPresent, "tknPresent="));
    record.Capture();
}

void GetSlotListEnd(CK_RV rv, CK_BBOOL, CK_SLOT_ID_PTR pSlotList, CK_ULONG_PTR pulCount) {
    if (!LevelSelects(kGetSlotList)) return;
    EndRecord record(kGetSlotList, rv);
    record.AddDescriptor(SlotListChild(pSlotList, ValueAt(pulCount)));
    record.Capture();
}

void GetSlotInfoStart(CK_SLOT_ID slotID, CK_SLOT_INFO_PTR) {
    if (!LevelSelects(kGetSlotInfo)) return;
    StartRecord record(kGetSlotInfo);
    record.AddDescriptor(SlotChild(slotID));
    record.Capture();
}

void GetSlotInfoEnd(CK_RV rv, CK_SLOT_ID, CK_SLOT_INFO_PTR pInfo) {
    if (!LevelSelects(kGetSlotInfo)) return;
    EndRecord record(kGetSlotInfo, rv);
    record.AddDescriptor(SlotInfoChild(pInfo));
    record.Capture();
}

void GetTokenInfoStart(CK_SLOT_ID slotID, CK_TOKEN_INFO_PTR pInfo) {
    if (!LevelSelects(kGetTokenInfo)) return;
    StartRecord record(kGetTokenInfo);
    record.AddDescriptor(SlotChild(slotID));
    record.AddDescriptor(PointerChild(pInfo));
    record.Capture();
}

void GetTokenInfoEnd(CK_RV rv, CK_SLOT_ID, CK_TOKEN_INFO_PTR pInfo) {
    if (!LevelSelects(kGetTokenInfo)) return;
    EndRecord record(kGetTokenInfo, rv);
    record.AddDescriptor(PointerChild(pInfo));
    if (pInfo != nullptr) record.AddDescriptor(TokenInfoChild(pInfo));
    record.Capture();
}

void WaitForSlotEventStart(CK_FLAGS flags, CK_SLOT_ID_PTR, CK_VOID_PTR) {
    if (!LevelSelects(kWaitForSlotEvent)) return;
    StartRecord record(kWaitForSlotEvent);
    record.AddDescriptor(FlagsChild(flags));
    record.Capture();
}

void WaitForSlotEventEnd(CK_RV rv, CK_FLAGS, CK_SLOT_ID_PTR pSlot, CK_VOID_PTR) {
    if (!LevelSelects(kWaitForSlotEvent)) return;
    EndRecord record(kWaitForSlotEvent, rv);
    record.AddDescriptor(SlotAddressChild(pSlot));
    record.Capture();
}

void GetMechanismListStart(CK_SLOT_ID slotID, CK_MECHANISM_TYPE_PTR, CK_ULONG_PTR) {
    if (!LevelSelects(kGetMechanismList)) return;
    StartRecord record(kGetMechanismList);
    record.AddDescriptor(SlotChild(slotID));
    record.Capture();
}

void GetMechanismListEnd(CK_RV rv, CK_SLOT_ID, CK_MECHANISM_TYPE_PTR pMechanismList, CK_ULONG_PTR pulCount) {
    if (!LevelSelects(kGetMechanismList)) return;
    EndRecord record(kGetMechanismList, rv);
    record.AddDescriptor(MechanismTypeListChild(pMechanismList, ValueAt(pulCount)));
    record.Capture();
}

void GetMechanismInfoStart(CK_SLOT_ID slotID, CK_MECHANISM_TYPE type, CK_MECHANISM_INFO_PTR) {
    if (!LevelSelects(kGetMechanismInfo)) return;
    StartRecord record(kGetMechanismInfo);
    record.AddDescriptor(SlotChild(slotID));
    record.AddDescriptor(MechanismTypeChild(type));
    record.Capture();
}

void GetMechanismInfoEnd(CK_RV rv, CK_SLOT_ID, CK_MECHANISM_TYPE, CK_MECHANISM_INFO_PTR pInfo) {
    if (!LevelSelects(kGetMechanismInfo)) return;
    EndRecord record(kGetMechanismInfo, rv);
    record.AddDescriptor(MechanismInfoChild(pInfo));
    record.Capture();
}

void InitTokenStart(CK_SLOT_ID slotID, CK_UTF8CHAR_PTR pPin, CK_ULONG, CK_UTF8CHAR_PTR pLabel) {
    if (!LevelSelects(kInitToken)) return;
    StartRecord record(kInitToken);
    record.AddDescriptor(SlotChild(slotID));
    record.AddDescriptor(PinChild(pPin));
    record.AddDescriptor(NameChild(pLabel, kLabelLength, "label="));
    record.Capture();
}

void InitTokenEnd(CK_RV rv, CK_SLOT_ID, CK_UTF8CHAR_PTR, CK_ULONG, CK_UTF8CHAR_PTR) {
    if (!LevelSelects(kInitToken)) return;
    EndRecord record(kInitToken, rv);
    record.Capture();
}

void InitPINStart(CK_SESSION_HANDLE hSession, CK_UTF8CHAR_PTR pPin, CK_ULONG) {
    if (!LevelSelects(kInitPIN)) return;
    StartRecord record(kInitPIN);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(PinChild(pPin));
    record.Capture();
}

void InitPINEnd(CK_RV rv, CK_SESSION_HANDLE, CK_UTF8CHAR_PTR, CK_ULONG) {
    if (!LevelSelects(kInitPIN)) return;
    EndRecord record(kInitPIN, rv);
    record.Capture();
}

void SetPINStart(CK_SESSION_HANDLE hSession, CK_UTF8CHAR_PTR pOldPin, CK_ULONG, CK_UTF8CHAR_PTR pNewPin,
                 CK_ULONG) {
    if (!LevelSelects(kSetPIN)) return;
    StartRecord record(kSetPIN);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(PinChild(pOldPin, "Old="));
    record.AddDescriptor(PinChild(pNewPin, "New="));
    record.Capture();
}

void SetPINEnd(CK_RV rv, CK_SESSION_HANDLE, CK_UTF8CHAR_PTR, CK_ULONG, CK_UTF8CHAR_PTR, CK_ULONG) {
    if (!LevelSelects(kSetPIN)) return;
    EndRecord record(kSetPIN, rv);
    record.Capture();
}
