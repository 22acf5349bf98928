// Records of high-availability groups.

#include "records/vendor_children.h"
#include "records/vendor_commands.h"
#include "records/vendor_records.h"

void HAInitCmdStart(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hLoginKey) {
    CommandDescriptor command(kCmdHAInit, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Object(hLoginKey));
    command.Capture();
}

void HAInitCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_OBJECT_HANDLE) {
    CommandDescriptor command(kCmdHAInit, kEnd, rv);
    command.Capture();
}

void HAGetMasterPublicCmdStart(CK_SLOT_ID slotID, CK_BYTE_PTR pCertificate, CK_ULONG_PTR pulCertificateLen) {
    CommandDescriptor command(kCmdHAGetMasterPublic, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Pointer(pCertificate));
    command.AddDescriptor(Pointer(pulCertificateLen));
    AddNumberAt(command, pulCertificateLen);
    command.Capture();
}

void HAGetMasterPublicCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_BYTE_PTR pCertificate,
                             CK_ULONG_PTR pulCertificateLen) {
    CommandDescriptor command(kCmdHAGetMasterPublic, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        command.AddDescriptor(Pointer(pCertificate));
        command.AddDescriptor(Pointer(pulCertificateLen));
        AddNumberAt(command, pulCertificateLen);
        AddBytes(command, pCertificate, ValueAt(pulCertificateLen));
    }
    command.Capture();
}

void HAGetLoginChallengeCmdStart(CK_SESSION_HANDLE hSession, CK_USER_TYPE userType, CK_BYTE_PTR pCertificate,
                                 CK_ULONG ulCertificateLen, CK_BYTE_PTR pChallenge,
                                 CK_ULONG_PTR pulChallengeLen) {
    CommandDescriptor command(kCmdHAGetLoginChallenge, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(UserType(userType));
    command.AddDescriptor(Pointer(pCertificate));
    command.AddDescriptor(Number(ulCertificateLen));
    AddBytes(command, pCertificate, ulCertificateLen);
    command.AddDescriptor(Pointer(pChallenge));
    command.AddDescriptor(Pointer(pulChallengeLen));
    AddNumberAt(command, pulChallengeLen);
    command.Capture();
}

void HAGetLoginChallengeCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_USER_TYPE userType, CK_BYTE_PTR,
                               CK_ULONG, CK_BYTE_PTR pChallenge, CK_ULONG_PTR pulChallengeLen) {
    CommandDescriptor command(kCmdHAGetLoginChallenge, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Session(hSession));
        command.AddDescriptor(UserType(userType));
        command.AddDescriptor(Pointer(pChallenge));
        AddNumberAt(command, pulChallengeLen);
        AddBytes(command, pChallenge, ValueAt(pulChallengeLen));
    }
    command.Capture();
}

void HAAnswerLoginChallengeCmdStart(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hLoginKey,
                                    CK_BYTE_PTR pChallenge, CK_ULONG ulChallengeLen, CK_BYTE_PTR pAnswer,
                                    CK_ULONG_PTR pulAnswerLen) {
    CommandDescriptor command(kCmdHAAnswerLoginChallenge, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Object(hLoginKey));
    command.AddDescriptor(Pointer(pChallenge));
    command.AddDescriptor(Number(ulChallengeLen));
    AddBytes(command, pChallenge, ulChallengeLen);
    command.AddDescriptor(Pointer(pAnswer));
    command.AddDescriptor(Pointer(pulAnswerLen));
    command.Capture();
}

void HAAnswerLoginChallengeCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE, CK_BYTE_PTR,
                                  CK_ULONG, CK_BYTE_PTR pAnswer, CK_ULONG_PTR pulAnswerLen) {
    CommandDescriptor command(kCmdHAAnswerLoginChallenge, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Session(hSession));
        command.AddDescriptor(Pointer(pAnswer));
        command.AddDescriptor(Pointer(pulAnswerLen));
        AddBytes(command, pAnswer, ValueAt(pulAnswerLen));
    }
    command.Capture();
}

void HALoginCmdStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pAnswer, CK_ULONG ulAnswerLen,
                     CK_BYTE_PTR pMofNChallenge, CK_ULONG_PTR pulMofNChallengeLen) {
    CommandDescriptor command(kCmdHALogin, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Pointer(pAnswer));
    command.AddDescriptor(Number(ulAnswerLen));
    AddBytes(command, pAnswer, ulAnswerLen);
    command.AddDescriptor(Pointer(pMofNChallenge));
    command.AddDescriptor(Pointer(pulMofNChallengeLen));
    command.Capture();
}

void HALoginCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR pMofNChallenge,
                   CK_ULONG_PTR pulMofNChallengeLen) {
    CommandDescriptor command(kCmdHALogin, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Session(hSession));
        command.AddDescriptor(Pointer(pMofNChallenge));
        command.AddDescriptor(Pointer(pulMofNChallengeLen));
        AddBytes(command, pMofNChallenge, ValueAt(pulMofNChallengeLen));
    }
    command.Capture();
}

void HAAnswerMofNChallengeCmdStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pMofNChallenge,
                                   CK_ULONG ulMofNChallengeLen, CK_BYTE_PTR pMofNAnswer,
                                   CK_ULONG_PTR pulMofNAnswerLen) {
    CommandDescriptor command(kCmdHAAnswerMofNChallenge, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Pointer(pMofNChallenge));
    command.AddDescriptor(Number(ulMofNChallengeLen));
    AddBytes(command, pMofNChallenge, ulMofNChallengeLen);
    command.AddDescriptor(Pointer(pMofNAnswer));
    command.AddDescriptor(Pointer(pulMofNAnswerLen));
    command.Capture();
}

void HAAnswerMofNChallengeCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_BYTE_PTR, CK_ULONG,
                                 CK_BYTE_PTR pMofNAnswer, CK_ULONG_PTR pulMofNAnswerLen) {
    CommandDescriptor command(kCmdHAAnswerMofNChallenge, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Session(hSession));
        command.AddDescriptor(Pointer(pMofNAnswer));
        AddNumberAt(command, pulMofNAnswerLen);
        AddBytes(command, pMofNAnswer, ValueAt(pulMofNAnswerLen));
    }
    command.Capture();
}

void HAActivateMofNCmdStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pMofNAnswer, CK_ULONG ulMofNAnswerLen) {
    CommandDescriptor command(kCmdHAActivateMofN, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Pointer(pMofNAnswer));
    command.AddDescriptor(Number(ulMofNAnswerLen));
    AddBytes(command, pMofNAnswer, ulMofNAnswerLen);
    command.Capture();
}

void HAActivateMofNCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG) {
    CommandDescriptor command(kCmdHAActivateMofN, kEnd, rv);
    command.Capture();
}

void GetHAStateCmdStart(CK_SLOT_ID slotID, CK_HA_STATUS* pState) {
    CommandDescriptor command(kCmdGetHAState, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Pointer(pState));
    command.Capture();
}

void GetHAStateCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_HA_STATUS* pState) {
    CommandDescriptor command(kCmdGetHAState, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        command.AddDescriptor(Pointer(pState));
        if (pState != nullptr) command.AddDescriptor(HAStatus(pState));
    }
    command.Capture();
}
