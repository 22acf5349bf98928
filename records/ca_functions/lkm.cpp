// Records of the LKM key exchange between two tokens.

#include "records/vendor_children.h"
#include "records/vendor_commands.h"
#include "records/vendor_records.h"

void LKMInitiatorChallengeCmdStart(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hKey, CK_ULONG ulOption,
                                   CK_MECHANISM_TYPE hashMechanism, CK_BYTE_PTR pPeerKey,
                                   CK_ULONG ulPeerKeyLen, CK_BYTE_PTR pSharedData, CK_ULONG ulSharedDataLen,
                                   CK_BYTE_PTR pChallenge, CK_ULONG_PTR pulChallengeLen) {
    CommandDescriptor command(kCmdLKMInitiatorChallenge, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Number(hKey));
    command.AddDescriptor(Number(ulOption));
    command.AddDescriptor(Number(hashMechanism, "hashMech="));
    command.AddDescriptor(Pointer(pPeerKey));
    AddBytes(command, pPeerKey, ulPeerKeyLen);
    command.AddDescriptor(Pointer(pSharedData));
    AddBytes(command, pSharedData, ulSharedDataLen);
    command.AddDescriptor(Pointer(pChallenge));
    command.AddDescriptor(Pointer(pulChallengeLen));
    command.Capture();
}

void LKMInitiatorChallengeCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hKey,
                                 CK_ULONG ulOption, CK_MECHANISM_TYPE hashMechanism, CK_BYTE_PTR pPeerKey,
                                 CK_ULONG ulPeerKeyLen, CK_BYTE_PTR pSharedData, CK_ULONG ulSharedDataLen,
                                 CK_BYTE_PTR pChallenge, CK_ULONG_PTR pulChallengeLen) {
    CommandDescriptor command(kCmdLKMInitiatorChallenge, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Session(hSession));
        command.AddDescriptor(Object(hKey));
        command.AddDescriptor(Number(ulOption));
        command.AddDescriptor(Number(hashMechanism, "hashMech="));
        command.AddDescriptor(Pointer(pPeerKey));
        AddBytes(command, pPeerKey, ulPeerKeyLen);
        command.AddDescriptor(Pointer(pSharedData));
        AddBytes(command, pSharedData, ulSharedDataLen);
        command.AddDescriptor(Pointer(pChallenge));
        command.AddDescriptor(Pointer(pulChallengeLen));
        AddBytes(command, pChallenge, ValueAt(pulChallengeLen));
    }
    command.Capture();
}

void LKMReceiverResponseCmdStart(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hKey, CK_ULONG ulOption,
                                 CK_MECHANISM_TYPE hashMechanism, CK_BYTE_PTR pChallenge,
                                 CK_ULONG ulChallengeLen, CK_BYTE_PTR pSharedData, CK_ULONG ulSharedDataLen,
                                 CK_BYTE_PTR pResponse, CK_ULONG_PTR pulResponseLen) {
    CommandDescriptor command(kCmdLKMReceiverResponse, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Number(hKey));
    command.AddDescriptor(Number(ulOption));
    command.AddDescriptor(Number(hashMechanism, "hashMech="));
    command.AddDescriptor(Pointer(pChallenge));
    AddBytes(command, pChallenge, ulChallengeLen);
    command.AddDescriptor(Pointer(pSharedData));
    command.AddDescriptor(Number(ulSharedDataLen));
    command.AddDescriptor(Pointer(pResponse));
    command.AddDescriptor(Pointer(pulResponseLen));
    command.Capture();
}

void LKMReceiverResponseCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hKey, CK_ULONG ulOption,
                               CK_MECHANISM_TYPE hashMechanism, CK_BYTE_PTR pChallenge,
                               CK_ULONG ulChallengeLen, CK_BYTE_PTR pSharedData, CK_ULONG ulSharedDataLen,
                               CK_BYTE_PTR pResponse, CK_ULONG_PTR pulResponseLen) {
    CommandDescriptor command(kCmdLKMReceiverResponse, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Session(hSession));
        command.AddDescriptor(Object(hKey));
        command.AddDescriptor(Number(ulOption));
        command.AddDescriptor(Number(hashMechanism, "hashMech="));
        command.AddDescriptor(Pointer(pChallenge));
        AddBytes(command, pChallenge, ulChallengeLen);
        command.AddDescriptor(Pointer(pSharedData));
        AddBytes(command, pSharedData, ulSharedDataLen);
        AddBytes(command, pResponse, ValueAt(pulResponseLen));
    }
    command.Capture();
}

void LKMInitiatorCompleteCmdStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pResponse, CK_ULONG ulResponseLen,
                                  CK_ATTRIBUTE_PTR pFirstTemplate, CK_ULONG ulFirstCount,
                                  CK_ATTRIBUTE_PTR pSecondTemplate, CK_ULONG ulSecondCount,
                                  CK_BYTE_PTR pConfirmation, CK_ULONG_PTR pulConfirmationLen,
                                  CK_OBJECT_HANDLE_PTR phFirstKey, CK_OBJECT_HANDLE_PTR phSecondKey) {
    CommandDescriptor command(kCmdLKMInitiatorComplete, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Pointer(pResponse));
    AddBytes(command, pResponse, ulResponseLen);
    command.AddDescriptor(Pointer(pFirstTemplate));
    if (pFirstTemplate != nullptr) command.AddDescriptor(Template(pFirstTemplate, ulFirstCount));
    command.AddDescriptor(Pointer(pSecondTemplate));
    if (pSecondTemplate != nullptr) command.AddDescriptor(Template(pSecondTemplate, ulSecondCount));
    command.AddDescriptor(Pointer(pConfirmation));
    command.AddDescriptor(Pointer(pulConfirmationLen));
    command.AddDescriptor(Pointer(phFirstKey));
    command.AddDescriptor(Pointer(phSecondKey));
    command.Capture();
}

void LKMInitiatorCompleteCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_BYTE_PTR pResponse,
                                CK_ULONG ulResponseLen, CK_ATTRIBUTE_PTR pFirstTemplate,
                                CK_ULONG ulFirstCount, CK_ATTRIBUTE_PTR pSecondTemplate,
                                CK_ULONG ulSecondCount, CK_BYTE_PTR pConfirmation,
                                CK_ULONG_PTR pulConfirmationLen, CK_OBJECT_HANDLE_PTR phFirstKey,
                                CK_OBJECT_HANDLE_PTR phSecondKey) {
    CommandDescriptor command(kCmdLKMInitiatorComplete, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Session(hSession));
        command.AddDescriptor(Pointer(pResponse));
        AddBytes(command, pResponse, ulResponseLen);
        command.AddDescriptor(Pointer(pFirstTemplate));
        if (pFirstTemplate != nullptr) command.AddDescriptor(Template(pFirstTemplate, ulFirstCount));
        command.AddDescriptor(Pointer(pSecondTemplate));
        if (pSecondTemplate != nullptr) command.AddDescriptor(Template(pSecondTemplate, ulSecondCount));
        command.AddDescriptor(Pointer(pConfirmation));
        AddBytes(command, pConfirmation, ValueAt(pulConfirmationLen));
        command.AddDescriptor(Pointer(phFirstKey));
        if (phFirstKey != nullptr) command.AddDescriptor(Object(ValueAt(phFirstKey)));
        command.AddDescriptor(Pointer(phSecondKey));
        if (phSecondKey != nullptr) command.AddDescriptor(Object(ValueAt(phSecondKey)));
    }
    command.Capture();
}

void LKMReceiverCompleteCmdStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pConfirmation,
                                 CK_ULONG ulConfirmationLen, CK_ATTRIBUTE_PTR pFirstTemplate,
                                 CK_ULONG ulFirstCount, CK_ATTRIBUTE_PTR pSecondTemplate,
                                 CK_ULONG ulSecondCount, CK_OBJECT_HANDLE_PTR phFirstKey,
                                 CK_OBJECT_HANDLE_PTR phSecondKey) {
    CommandDescriptor command(kCmdLKMReceiverComplete, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Pointer(pConfirmation));
    AddBytes(command, pConfirmation, ulConfirmationLen);
    command.AddDescriptor(Pointer(pFirstTemplate));
    if (pFirstTemplate != nullptr) command.AddDescriptor(Template(pFirstTemplate, ulFirstCount));
    command.AddDescriptor(Pointer(pSecondTemplate));
    if (pSecondTemplate != nullptr) command.AddDescriptor(Template(pSecondTemplate, ulSecondCount));
    command.AddDescriptor(Pointer(phFirstKey));
    command.AddDescriptor(Pointer(phSecondKey));
    command.Capture();
}

void LKMReceiverCompleteCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_BYTE_PTR pConfirmation,
                               CK_ULONG ulConfirmationLen, CK_ATTRIBUTE_PTR pFirstTemplate,
                               CK_ULONG ulFirstCount, CK_ATTRIBUTE_PTR pSecondTemplate,
                               CK_ULONG ulSecondCount, CK_OBJECT_HANDLE_PTR phFirstKey,
                               CK_OBJECT_HANDLE_PTR phSecondKey) {
    CommandDescriptor command(kCmdLKMReceiverComplete, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Session(hSession));
        command.AddDescriptor(Pointer(pConfirmation));
        AddBytes(command, pConfirmation, ulConfirmationLen);
        command.AddDescriptor(Pointer(pFirstTemplate));
        if (pFirstTemplate != nullptr) command.AddDescriptor(Template(pFirstTemplate, ulFirstCount));
        command.AddDescriptor(Pointer(pSecondTemplate));
        if (pSecondTemplate != nullptr) command.AddDescriptor(Template(pSecondTemplate, ulSecondCount));
        if (phFirstKey != nullptr) command.AddDescriptor(Object(ValueAt(phFirstKey)));
        command.AddDescriptor(Pointer(phSecondKey));
        if (phSecondKey != nullptr) command.AddDescriptor(Object(ValueAt(phSecondKey)));
    }
    command.Capture();
}
