// Builds the records of the LKM key exchange between two tokens.

#include "records/vendor_children.h"
#include "records/vendor_commands.h"
#include "records/vendor_records.h"

using namespace ckscribe;

void LKMInitiatorChallengeCmdStart(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hKey, CK_ULONG ulOption,
                                   CK_MECHANISM_TYPE hashMechanism, CK_BYTE_PTR pPeerKey,
                                   CK_ULONG ulPeerKeyLen, CK_BYTE_PTR pSharedData, CK_ULONG ulSharedDataLen,
                                   CK_BYTE_PTR pChallenge, CK_ULONG_PTR pulChallengeLen) {
    StartRecord record(kCmdLKMInitiatorChallenge);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(NumberChild(hKey));
    record.AddDescriptor(NumberChild(ulOption));
    record.AddDescriptor(NumberChild(hashMechanism, "hashMech="));
    record.AddDescriptor(PointerChild(pPeerKey));
    AddBytes(record, pPeerKey, ulPeerKeyLen);
    record.AddDescriptor(PointerChild(pSharedData));
    AddBytes(record, pSharedData, ulSharedDataLen);
    record.AddDescriptor(PointerChild(pChallenge));
    record.AddDescriptor(PointerChild(pulChallengeLen));
    record.Capture();
}

void LKMInitiatorChallengeCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hKey,
                                 CK_ULONG ulOption, CK_MECHANISM_TYPE hashMechanism, CK_BYTE_PTR pPeerKey,
                                 CK_ULONG ulPeerKeyLen, CK_BYTE_PTR pSharedData, CK_ULONG ulSharedDataLen,
                                 CK_BYTE_PTR pChallenge, CK_ULONG_PTR pulChallengeLen) {
    EndRecord record(kCmdLKMInitiatorChallenge, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SessionChild(hSession));
        record.AddDescriptor(ObjectChild(hKey));
        record.AddDescriptor(NumberChild(ulOption));
        record.AddDescriptor(NumberChild(hashMechanism, "hashMech="));
        record.AddDescriptor(PointerChild(pPeerKey));
        AddBytes(record, pPeerKey, ulPeerKeyLen);
        record.AddDescriptor(PointerChild(pSharedData));
        AddBytes(record, pSharedData, ulSharedDataLen);
        record.AddDescriptor(PointerChild(pChallenge));
        record.AddDescriptor(PointerChild(pulChallengeLen));
        AddBytes(record, pChallenge, ValueAt(pulChallengeLen));
    }
    record.Capture();
}

void LKMReceiverResponseCmdStart(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hKey, CK_ULONG ulOption,
                                 CK_MECHANISM_TYPE hashMechanism, CK_BYTE_PTR pChallenge,
                                 CK_ULONG ulChallengeLen, CK_BYTE_PTR pSharedData, CK_ULONG ulSharedDataLen,
                                 CK_BYTE_PTR pResponse, CK_ULONG_PTR pulResponseLen) {
    StartRecord record(kCmdLKMReceiverResponse);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(NumberChild(hKey));
    record.AddDescriptor(NumberChild(ulOption));
    record.AddDescriptor(NumberChild(hashMechanism, "hashMech="));
    record.AddDescriptor(PointerChild(pChallenge));
    AddBytes(record, pChallenge, ulChallengeLen);
    record.AddDescriptor(PointerChild(pSharedData));
    record.AddDescriptor(NumberChild(ulSharedDataLen));
    record.AddDescriptor(PointerChild(pResponse));
    record.AddDescriptor(PointerChild(pulResponseLen));
    record.Capture();
}

void LKMReceiverResponseCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hKey, CK_ULONG ulOption,
                               CK_MECHANISM_TYPE hashMechanism, CK_BYTE_PTR pChallenge,
                               CK_ULONG ulChallengeLen, CK_BYTE_PTR pSharedData, CK_ULONG ulSharedDataLen,
                               CK_BYTE_PTR pResponse, CK_ULONG_PTR pulResponseLen) {
    EndRecord record(kCmdLKMReceiverResponse, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SessionChild(hSession));
        record.AddDescriptor(ObjectChild(hKey));
        record.AddDescriptor(NumberChild(ulOption));
        record.AddDescriptor(NumberChild(hashMechanism, "hashMech="));
        record.AddDescriptor(PointerChild(pChallenge));
        AddBytes(record, pChallenge, ulChallengeLen);
        record.AddDescriptor(PointerChild(pSharedData));
        AddBytes(record, pSharedData, ulSharedDataLen);
        AddBytes(record, pResponse, ValueAt(pulResponseLen));
    }
    record.Capture();
}

void LKMInitiatorCompleteCmdStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pResponse, CK_ULONG ulResponseLen,
                                  CK_ATTRIBUTE_PTR pFirstTemplate, CK_ULONG ulFirstCount,
                                  CK_ATTRIBUTE_PTR pSecondTemplate, CK_ULONG ulSecondCount,
                                  CK_BYTE_PTR pConfirmation, CK_ULONG_PTR pulConfirmationLen,
                                  CK_OBJECT_HANDLE_PTR phFirstKey, CK_OBJECT_HANDLE_PTR phSecondKey) {
    StartRecord record(kCmdLKMInitiatorComplete);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(PointerChild(pResponse));
    AddBytes(record, pResponse, ulResponseLen);
    record.AddDescriptor(PointerChild(pFirstTemplate));
    if (pFirstTemplate != nullptr) record.AddDescriptor(TemplateChild(pFirstTemplate, ulFirstCount));
    record.AddDescriptor(PointerChild(pSecondTemplate));
    if (pSecondTemplate != nullptr) record.AddDescriptor(TemplateChild(pSecondTemplate, ulSecondCount));
    record.AddDescriptor(PointerChild(pConfirmation));
    record.AddDescriptor(PointerChild(pulConfirmationLen));
    record.AddDescriptor(PointerChild(phFirstKey));
    record.AddDescriptor(PointerChild(phSecondKey));
    record.Capture();
}

void LKMInitiatorCompleteCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_BYTE_PTR pResponse,
                                CK_ULONG ulResponseLen, CK_ATTRIBUTE_PTR pFirstTemplate,
                                CK_ULONG ulFirstCount, CK_ATTRIBUTE_PTR pSecondTemplate,
                                CK_ULONG ulSecondCount, CK_BYTE_PTR pConfirmation,
                                CK_ULONG_PTR pulConfirmationLen, CK_OBJECT_HANDLE_PTR phFirstKey,
                                CK_OBJECT_HANDLE_PTR phSecondKey) {
    EndRecord record(kCmdLKMInitiatorComplete, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SessionChild(hSession));
        record.AddDescriptor(PointerChild(pResponse));
        AddBytes(record, pResponse, ulResponseLen);
        record.AddDescriptor(PointerChild(pFirstTemplate));
        if (pFirstTemplate != nullptr) record.AddDescriptor(TemplateChild(pFirstTemplate, ulFirstCount));
        record.AddDescriptor(PointerChild(pSecondTemplate));
        if (pSecondTemplate != nullptr) record.AddDescriptor(TemplateChild(pSecondTemplate, ulSecondCount));
        record.AddDescriptor(PointerChild(pConfirmation));
        AddBytes(record, pConfirmation, ValueAt(pulConfirmationLen));
        record.AddDescriptor(PointerChild(phFirstKey));
        if (phFirstKey != nullptr) record.AddDescriptor(ObjectChild(ValueAt(phFirstKey)));
        record.AddDescriptor(PointerChild(phSecondKey));
        if (phSecondKey != nullptr) record.AddDescriptor(ObjectChild(ValueAt(phSecondKey)));
    }
    record.Capture();
}

void LKMReceiverCompleteCmdStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pConfirmation,
                                 CK_ULONG ulConfirmationLen, CK_ATTRIBUTE_PTR pFirstTemplate,
                                 CK_ULONG ulFirstCount, CK_ATTRIBUTE_PTR pSecondTemplate,
                                 CK_ULONG ulSecondCount, CK_OBJECT_HANDLE_PTR phFirstKey,
                                 CK_OBJECT_HANDLE_PTR phSecondKey) {
    StartRecord record(kCmdLKMReceiverComplete);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(PointerChild(pConfirmation));
    AddBytes(record, pConfirmation, ulConfirmationLen);
    record.AddDescriptor(PointerChild(pFirstTemplate));
    if (pFirstTemplate != nullptr) record.AddDescriptor(TemplateChild(pFirstTemplate, ulFirstCount));
    record.AddDescriptor(PointerChild(pSecondTemplate));
    if (pSecondTemplate != nullptr) record.AddDescriptor(TemplateChild(pSecondTemplate, ulSecondCount));
    record.AddDescriptor(PointerChild(phFirstKey));
    record.AddDescriptor(PointerChild(phSecondKey));
    record.Capture();
}

void LKMReceiverCompleteCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_BYTE_PTR pConfirmation,
                               CK_ULONG ulConfirmationLen, CK_ATTRIBUTE_PTR pFirstTemplate,
                               CK_ULONG ulFirstCount, CK_ATTRIBUTE_PTR pSecondTemplate,
                               CK_ULONG ulSecondCount, CK_OBJECT_HANDLE_PTR phFirstKey,
                               CK_OBJECT_HANDLE_PTR phSecondKey) {
    EndRecord record(kCmdLKMReceiverComplete, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SessionChild(hSession));
        record.AddDescriptor(PointerChild(pConfirmation));
        AddBytes(record, pConfirmation, ulConfirmationLen);
        record.AddDescriptor(PointerChild(pFirstTemplate));
        if (pFirstTemplate != nullptr) record.AddDescriptor(TemplateChild(pFirstTemplate, ulFirstCount));
        record.AddDescriptor(PointerChild(pSecondTemplate));
        if (pSecondTemplate != nullptr) record.AddDescriptor(TemplateChild(pSecondTemplate, ulSecondCount));
        if (phFirstKey != nullptr) record.AddDescriptor(ObjectChild(ValueAt(phFirstKey)));
        record.AddDescriptor(PointerChild(phSecondKey));
        if (phSecondKey != nullptr) record.AddDescriptor(ObjectChild(ValueAt(phSecondKey)));
    }
    record.Capture();
}
